// A value that is worked out when it is first asked for, whoever asks.
#pragma once

#include <atomic>
#include <mutex>

namespace tavrin {

/// Safe from any thread; whoever comes second waits for the first.
template <class T>
class ComputedOnce {
  public:
    ComputedOnce() = default;
    ComputedOnce(const ComputedOnce&) = delete;
    ComputedOnce& operator=(const ComputedOnce&) = delete;

    template <class Compute>
    const T& get(const Compute& compute) const {
        if (!ready_.load(std::memory_order_acquire)) {
            const std::lock_guard lock(lock_);
            if (!ready_.load(std::memory_order_relaxed)) {
                value_ = compute();
                ready_.store(true, std::memory_order_release);
            }
        }
        return value_;
    }
    [[nodiscard]] bool isReady() const { return ready_.load(std::memory_order_acquire); }

  private:
    mutable std::mutex lock_;
    mutable std::atomic<bool> ready_ = false;
    mutable T value_;
};

}  // namespace tavrin
