// A file of this program's own that only grows, so that what was written to it stands whatever becomes of the process.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <memory>
#include <string_view>

namespace tavrin {

/// Not shared between threads.
class AppendedFile {
  public:
    /// A new file; nil when it can't be made. What stands at `url` is never opened, nor is what a link there leads to.
    /// `mode` is what the user's mask leaves of it.
    [[nodiscard]] static std::unique_ptr<AppendedFile> make(const URL& url, unsigned mode);

    virtual ~AppendedFile() = default;

    /// In the system's hands when this returns: the end of the process doesn't lose it, a power cut may. False when
    /// some of it, or nothing, could be written.
    virtual bool append(std::string_view bytes) = 0;
    /// Waits until a power cut doesn't lose it either.
    virtual void sync() = 0;

  protected:
    AppendedFile() = default;
    AppendedFile(const AppendedFile&) = default;
    AppendedFile& operator=(const AppendedFile&) = default;
};

}  // namespace tavrin
