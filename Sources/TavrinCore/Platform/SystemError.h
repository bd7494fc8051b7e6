// What the system said when it refused: a domain, a code in it, the system's own words, and the error behind it.
//
// Foundation's shape, so that a rule told on domain and code reads the same on every system. On Linux all errors are of
// the POSIX domain.
#pragma once

#include <cerrno>
#include <memory>
#include <string>
#include <utility>
#include <variant>

namespace tavrin {

struct SystemError {
    /// Names are Foundation's.
    static constexpr const char* posixDomain = "NSPOSIXErrorDomain";
    static constexpr const char* cocoaDomain = "NSCocoaErrorDomain";

    std::string domain;
    int code = 0;
    /// One sentence for people, in the running language; where this program has none for it, the system's own words in
    /// the user's locale.
    std::string localizedDescription;
    /// The error that caused this one, if the system told.
    std::shared_ptr<const SystemError> underlying = nullptr;
    /// The system's own words, untranslated: for whoever looks into it, not for the screen.
    std::string systemText = {};

    /// An error of the POSIX domain with the texts that belong to it. Safe from any thread.
    [[nodiscard]] static SystemError posix(int errorNumber);

    [[nodiscard]] bool isPosix(int errorNumber) const { return domain == posixDomain && code == errorNumber; }
    /// Whether it says that nothing stands at the path. Any other refusal leaves that open.
    [[nodiscard]] bool meansMissing() const { return isPosix(ENOENT) || isPosix(ENOTDIR); }
};

/// A value, or the error that stands in its place. Nothing is thrown on the file system's account.
template <class T>
class [[nodiscard]] Result {
  public:
    Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}  // NOLINT(google-explicit-constructor)
    Result(SystemError error)
        : state_(std::in_place_index<1>, std::move(error)) {}  // NOLINT(google-explicit-constructor)

    [[nodiscard]] bool ok() const { return state_.index() == 0; }
    explicit operator bool() const { return ok(); }

    /// Only when ok().
    [[nodiscard]] T& value() { return std::get<0>(state_); }
    [[nodiscard]] const T& value() const { return std::get<0>(state_); }
    [[nodiscard]] T& operator*() { return value(); }
    [[nodiscard]] const T& operator*() const { return value(); }
    [[nodiscard]] T* operator->() { return &value(); }
    [[nodiscard]] const T* operator->() const { return &value(); }
    /// Only when not ok().
    [[nodiscard]] const SystemError& error() const { return std::get<1>(state_); }

  private:
    std::variant<T, SystemError> state_;
};

/// For an operation that gives nothing back but its success.
using Outcome = Result<std::monostate>;
inline Outcome success() {
    return std::monostate{};
}

}  // namespace tavrin
