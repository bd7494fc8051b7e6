#include "Support/RecordingFileEffects.h"

#include <cerrno>
#include <utility>

namespace tavrin::test {
namespace {

class RecordedItem final : public HeldItem {
  public:
    RecordedItem(URL url, URL realURL) : HeldItem(std::move(url), std::move(realURL)) {}
};

}  // namespace

bool RecordingFileEffects::exists(const URL& url) {
    return itemExists(url);
}

bool RecordingFileEffects::itemExists(const URL& url) {
    for (URL above = url;; above = above.deletingLastPathComponent()) {
        if (standing.contains(above.path())) return true;
        if (above.path() == "/") return false;
    }
}

Result<std::unique_ptr<HeldItem>> RecordingFileEffects::hold(const URL& url) {
    if (const auto refusal = holdRefusals.find(url.path()); refusal != holdRefusals.end())
        return SystemError::posix(refusal->second);
    const auto real = realPlaces.find(url.path());
    return std::unique_ptr<HeldItem>(
        std::make_unique<RecordedItem>(url, real == realPlaces.end() ? url : real->second));
}

Result<std::optional<URL>> RecordingFileEffects::trashItem(HeldItem& item) {
    acts.push_back("trash " + item.url().path());
    if (const Outcome outcome = allowed(item.url()); !outcome) return outcome.error();
    standing.erase(item.url().path());
    URL trashed = URL::fromPath("/Trash").appendingPathComponent(item.url().lastPathComponent());
    standing.insert(trashed.path());
    return tellsNoLocation ? std::optional<URL>() : std::move(trashed);
}

Outcome RecordingFileEffects::removeItem(HeldItem& item) {
    acts.push_back("remove " + item.url().path());
    if (Outcome outcome = allowed(item.url()); !outcome) return outcome;
    standing.erase(item.url().path());
    return success();
}

Outcome RecordingFileEffects::createDirectory(const URL& url) {
    acts.push_back("make " + url.path());
    if (Outcome outcome = allowed(url); !outcome) return outcome;
    standing.insert(url.path());
    return success();
}

Outcome RecordingFileEffects::putBack(const URL& trashed, const URL& original) {
    acts.push_back("return " + trashed.path() + " to " + original.path());
    if (Outcome outcome = allowed(original); !outcome) return outcome;
    if (standing.contains(original.path())) return SystemError::posix(EEXIST);
    standing.erase(trashed.path());
    standing.insert(original.path());
    return success();
}

Outcome RecordingFileEffects::allowed(const URL& url) const {
    const auto refusal = refusals.find(url.path());
    return refusal == refusals.end() ? success() : SystemError::posix(refusal->second);
}

}  // namespace tavrin::test
