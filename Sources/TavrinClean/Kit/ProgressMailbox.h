// From a scan's many reports to what a screen can show: at most one a frame, and always the last.
#pragma once

#include "TavrinCore/Models/Models.h"

#include <QTimer>
#include <functional>
#include <memory>

namespace tavrin {

class Background;

/// Lives on the main thread. A report is a whole snapshot, so one that is overtaken does no harm.
class ProgressMailbox {
  public:
    using Deliver = std::function<void(const ScanProgress&)>;

    /// One frame of a screen that shows sixty in a second.
    static constexpr int frameMilliseconds = 16;

    ProgressMailbox(Background& background, Deliver deliver);
    ~ProgressMailbox();
    ProgressMailbox(const ProgressMailbox&) = delete;
    ProgressMailbox& operator=(const ProgressMailbox&) = delete;

    /// For the one who reports: safe from any thread, and harmless once the mailbox is gone.
    [[nodiscard]] ProgressCallback callback();
    /// Delivers what has arrived, without waiting for the frame.
    void flush();

  private:
    struct Box;

    void arrived();

    Background* background_;
    Deliver deliver_;
    std::shared_ptr<Box> box_;
    /// Runs for a frame after each delivery. The owner of what is queued for the main thread, too.
    QTimer frame_;
};

}  // namespace tavrin
