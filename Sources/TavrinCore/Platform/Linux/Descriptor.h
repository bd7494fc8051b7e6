// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

namespace tavrin {

/// Owns one descriptor, or none. Moves, never copies.
class Descriptor {
  public:
    Descriptor() = default;
    /// Takes what open(2) gave; a negative number is none.
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { reset(); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) {
            reset();
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }
    /// Gives the descriptor away: closing it is the caller's business now.
    [[nodiscard]] int release() { return std::exchange(number_, -1); }
    void reset() {
        if (number_ >= 0) ::close(number_);
        number_ = -1;
    }

  private:
    int number_ = -1;
};

}  // namespace tavrin
