// Whether anybody opened or read a file.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace tavrin::test {

/// Remembers from here on. Works for a FIFO as well, which it never opens.
class FileWatch {
  public:
    FileWatch() = default;
    ~FileWatch() { ::close(queue_); }
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

    /// `events` as inotify(7) names them: IN_OPEN, IN_ACCESS.
    void watch(const URL& file, std::uint32_t events) {
        EXPECT_GE(::inotify_add_watch(queue_, file.path().c_str(), events), 0) << file.path();
    }

    [[nodiscard]] bool sawAny() const {
        pollfd queue{.fd = queue_, .events = POLLIN, .revents = 0};
        return ::poll(&queue, 1, 0) == 1;
    }

    /// Events so far; they are forgotten.
    [[nodiscard]] std::size_t count() {
        alignas(inotify_event) std::array<char, 64 * 1024> events;
        std::size_t count = 0;
        for (ssize_t size = 0; (size = ::read(queue_, events.data(), events.size())) > 0;)
            count += static_cast<std::size_t>(size) / sizeof(inotify_event);  // those of files bear no name
        return count;
    }

  private:
    int queue_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
};

}  // namespace tavrin::test
