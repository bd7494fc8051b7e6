// The places that refused to be looked at during one scan: what tells an empty folder from a forbidden one.
//
// One instance is made per scan and handed by reference to all that helps it. Safe from any thread.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/SystemError.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace tavrin {

class AccessDenials {
  public:
    /// Takes `url` in, unless its path is there already.
    void record(const URL& url);
    /// The same where `error` says that permission is missing; nothing for any other error.
    void recordIfRefused(const URL& url, const SystemError& error);

    [[nodiscard]] bool isEmpty() const;
    /// The first root that was recorded.
    [[nodiscard]] std::optional<URL> first() const;
    /// A copy, in the order of first refusal.
    [[nodiscard]] std::vector<URL> all() const;

    [[nodiscard]] std::size_t count() const;

    /// The phase text of a scan's last report.
    [[nodiscard]] const std::string& finalPhase() const;
    /// Throws ScanError::accessDenied of the first root when nothing was found and something was refused.
    void throwIfNothingFound(std::int64_t itemCount) const;

    /// Whether `error`, or the one behind it, says that permission is missing.
    [[nodiscard]] static bool isPermissionError(const SystemError& error);

  private:
    mutable std::mutex lock_;
    std::vector<URL> roots_;
    /// Of the roots; a tree of somebody else's may refuse a hundred thousand times.
    std::unordered_set<std::string> paths_;
};

}  // namespace tavrin
