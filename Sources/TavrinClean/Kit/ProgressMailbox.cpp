#include "TavrinClean/Kit/ProgressMailbox.h"

#include "TavrinClean/Kit/Background.h"

#include <QPointer>
#include <mutex>
#include <optional>
#include <utility>

namespace tavrin {

struct ProgressMailbox::Box {
    std::mutex lock;
    std::optional<ScanProgress> latest;
    /// The main thread will look.
    bool announced = false;
};

ProgressMailbox::ProgressMailbox(Background& background, Deliver deliver)
    : background_(&background), deliver_(std::move(deliver)), box_(std::make_shared<Box>()) {
    frame_.setSingleShot(true);
    frame_.setTimerType(Qt::PreciseTimer);
    frame_.setInterval(frameMilliseconds);
    QObject::connect(&frame_, &QTimer::timeout, &frame_, [this] { flush(); });
}

ProgressMailbox::~ProgressMailbox() = default;

ProgressCallback ProgressMailbox::callback() {
    // `this` is used on the main thread only, where the timer's end tells of its own.
    return
        [this, box = box_, background = background_, alive = QPointer<QObject>(&frame_)](const ScanProgress& report) {
            {
                const std::lock_guard lock(box->lock);
                box->latest = report;
                if (std::exchange(box->announced, true)) return;
            }
            background->toMain(alive, [this] { arrived(); });
        };
}

void ProgressMailbox::arrived() {
    // Within the frame of the last delivery, the frame's end will find it.
    if (!frame_.isActive()) flush();
}

void ProgressMailbox::flush() {
    std::optional<ScanProgress> report;
    {
        const std::lock_guard lock(box_->lock);
        report = std::exchange(box_->latest, std::nullopt);
        // While the frame runs, its end looks again by itself: who reports steadily never has to wake the main thread.
        box_->announced = report.has_value();
    }
    if (!report) return;
    frame_.start();
    deliver_(*report);
}

}  // namespace tavrin
