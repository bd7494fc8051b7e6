// How the main thread tells a task in the background to stop.
#pragma once

#include <mutex>

namespace tavrin {

/// Shared by both sides, safe from any thread. Each run gets a new one, so that a flag left set can't stop the next run
/// and a new flag can't revive the last.
class ManagedAtomicFlag {
  public:
    void set(bool value = true) {
        const std::lock_guard lock(lock_);
        value_ = value;
    }
    [[nodiscard]] bool value() const {
        const std::lock_guard lock(lock_);
        return value_;
    }

  private:
    mutable std::mutex lock_;
    bool value_ = false;
};

}  // namespace tavrin
