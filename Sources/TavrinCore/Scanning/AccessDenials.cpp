#include "TavrinCore/Scanning/AccessDenials.h"

#include "TavrinCore/Models/Models.h"
#include "TavrinCore/Strings.h"

namespace tavrin {
namespace {

// The numbers of these two are the same on every system; the one of the Cocoa domain is NSFileReadNoPermissionError.
constexpr int kOperationNotPermitted = 1;
constexpr int kPermissionDenied = 13;
constexpr int kFileReadNoPermission = 257;

bool isPermissionCode(int code) {
    return code == kOperationNotPermitted || code == kPermissionDenied;
}

}  // namespace

void AccessDenials::record(const URL& url) {
    const std::lock_guard guard(lock_);
    if (paths_.insert(std::string(url.path())).second) roots_.push_back(url);
}

void AccessDenials::recordIfRefused(const URL& url, const SystemError& error) {
    if (isPermissionError(error)) record(url);
}

bool AccessDenials::isEmpty() const {
    const std::lock_guard guard(lock_);
    return roots_.empty();
}

std::optional<URL> AccessDenials::first() const {
    const std::lock_guard guard(lock_);
    if (roots_.empty()) return std::nullopt;
    return roots_.front();
}

std::vector<URL> AccessDenials::all() const {
    const std::lock_guard guard(lock_);
    return roots_;
}

std::size_t AccessDenials::count() const {
    const std::lock_guard guard(lock_);
    return roots_.size();
}

const std::string& AccessDenials::finalPhase() const {
    return isEmpty() ? S::scanDone() : S::fdaTitle();
}

void AccessDenials::throwIfNothingFound(std::int64_t itemCount) const {
    if (itemCount != 0) return;
    if (std::optional<URL> root = first()) throw ScanError::accessDenied(*std::move(root));
}

bool AccessDenials::isPermissionError(const SystemError& error) {
    if (error.domain == SystemError::cocoaDomain && error.code == kFileReadNoPermission) return true;
    if (error.domain == SystemError::posixDomain && isPermissionCode(error.code)) return true;
    return error.underlying != nullptr && isPermissionCode(error.underlying->code);
}

}  // namespace tavrin
