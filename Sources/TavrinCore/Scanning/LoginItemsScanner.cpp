#include "TavrinCore/Scanning/LoginItemsScanner.h"

#include "TavrinCore/Scanning/Collation.h"
#include "TavrinCore/Scanning/DetailText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/PropertyList.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <compare>
#include <string_view>
#include <utility>

namespace tavrin {
namespace {

constexpr std::string_view kExtension = "plist";
/// Before the name of the program that is started.
constexpr std::string_view kStarts = "\u2192 ";

/// The first of the arguments; nil unless every one of them is a string.
const std::string* firstArgument(const PropertyList& agent) {
    const PropertyList::Array* arguments = agent.array("ProgramArguments");
    if (arguments == nullptr || arguments->empty()) return nullptr;
    const bool areStrings =
        std::ranges::all_of(*arguments, [](const PropertyList& argument) { return argument.string() != nullptr; });
    return areStrings ? arguments->front().string() : nullptr;
}

const std::string* programOf(const PropertyList& agent) {
    const std::string* program = agent.string("Program");
    return program != nullptr ? program : firstArgument(agent);
}

/// A relative name is looked up along the search path of whoever starts it, so nothing is said about it.
bool isMissing(const std::string& program) {
    return program.starts_with('/') && FileSystemUtils::isGone(URL::fromPath(program));
}

/// "/usr/bin/tool/" is "tool".
std::string_view lastComponent(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.remove_suffix(1);
    return path == "/" ? path : path.substr(path.rfind('/') + 1);
}

std::string detailOf(const PropertyList& agent, const std::string* program) {
    std::vector<std::string> parts;
    if (const std::string* label = agent.string("Label")) parts.push_back(detailName(*label));
    if (program != nullptr) parts.push_back(std::string(kStarts) + detailName(lastComponent(*program)));
    if (agent.boolean("RunAtLoad").value_or(false)) parts.push_back(S::detailRunsAtLogin());
    std::string detail = parts.empty() ? std::string() : parts.front();
    for (std::size_t i = 1; i < parts.size(); ++i)
        detail = joinedDetail(detail, parts[i]);
    return detail;
}

CleanableItem itemFor(URL file) {
    LoginItemsScanner::AgentInfo agent = LoginItemsScanner::inspectAgent(file);
    if (agent.isBroken) agent.detail = S::detailBrokenStartupItem();
    const std::int64_t size = FileSystemUtils::size(file);
    return {.id = UUID::random(),
            .url = std::move(file),
            .size = size,
            .category = ScanCategory::startupItem,
            .isSelected = agent.isBroken,
            .detail = std::move(agent.detail)};
}

}  // namespace

LoginItemsScanner::LoginItemsScanner(bool includePrivileged, std::optional<std::vector<URL>> injectedRoots)
    : includePrivileged_(includePrivileged), injectedRoots_(std::move(injectedRoots)) {}

std::vector<URL> LoginItemsScanner::roots() const {
    if (injectedRoots_) return *injectedRoots_;
    std::vector<URL> roots{FileSystemUtils::homeLibrary({"LaunchAgents"})};
    if (includePrivileged_) {
        roots.push_back(URL::fromPath("/Library/LaunchAgents/"));
        roots.push_back(URL::fromPath("/Library/LaunchDaemons/"));
    }
    return roots;
}

LoginItemsScanner::AgentInfo LoginItemsScanner::inspectAgent(const URL& file) {
    const std::optional<PropertyList> agent = PropertyList::fromFile(file);
    if (!agent || agent->dictionary() == nullptr) return {S::detailStartupAgent(), false};
    const std::string* program = programOf(*agent);
    return {detailOf(*agent, program), program != nullptr && isMissing(*program)};
}

std::vector<CleanableItem> LoginItemsScanner::scan(const ProgressCallback& progress,
                                                   const CancellationCallback& isCancelled) const {
    ScanRun run(progress, isCancelled);
    for (const URL& root : roots()) {
        run.throwIfCancelled();
        if (!FileSystemUtils::exists(root)) continue;
        for (URL& child : FileSystemUtils::children(root, false, &run.denials())) {
            if (child.pathExtension() == kExtension) run.add(itemFor(std::move(child)));
        }
    }
    std::vector<CleanableItem> items = run.finish(run.bytes());
    std::ranges::stable_sort(items, [](const CleanableItem& a, const CleanableItem& b) {
        if (a.isSelected != b.isSelected) return a.isSelected;
        return std::is_lt(compareNames(a.name(), b.name()));
    });
    return items;
}

}  // namespace tavrin
