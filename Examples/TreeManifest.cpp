#include "TreeManifest.h"

#include "TerminalText.h"

namespace tavrin::example {
namespace {

using Identity = std::pair<std::uint64_t, std::uint64_t>;

bool liesAtOrBelow(std::string path, const std::set<std::string>& places) {
    while (!places.contains(path)) {
        const std::size_t slash = path.rfind('/');
        if (slash == std::string::npos) return false;
        path.resize(slash);
    }
    return true;
}

/// The first name of each file among the names that both manifests hold.
std::map<Identity, std::string> firstNames(const TreeManifest& manifest, const TreeManifest& other) {
    std::map<Identity, std::string> names;
    for (const auto& [path, entry] : manifest)
        if (other.contains(path)) names.emplace(entry.identity, path);
    return names;
}

std::string relativePath(const URL& url, const URL& root) {
    return url.path() == root.path() ? std::string() : url.path().substr(root.path().size() + 1);
}

void compare(const std::string& path, const TreeEntry& before, const TreeEntry& after, bool timeMayDiffer,
             std::vector<std::string>& found) {
    const std::string name = terminalText(path.empty() ? "." : path);
    if (before.facts != after.facts) found.push_back(name + ": was " + before.facts + ", is " + after.facts);
    if (before.modified != after.modified && !timeMayDiffer)
        found.push_back(name + ": its time was " + std::to_string(before.modified) + ", is " +
                        std::to_string(after.modified));
}

}  // namespace

ExpectedChanges changesOfMoving(const std::vector<URL>& originals, const URL& root) {
    ExpectedChanges changes;
    for (const URL& original : originals) {
        changes.gone.insert(relativePath(original, root));
        changes.touchedFolders.insert(relativePath(original.deletingLastPathComponent(), root));
    }
    return changes;
}

std::vector<std::string> differences(const TreeManifest& before, const TreeManifest& after,
                                     const ExpectedChanges& expected) {
    std::vector<std::string> found;
    const auto namesBefore = firstNames(before, after);
    const auto namesAfter = firstNames(after, before);
    for (const auto& [path, entry] : before) {
        const auto other = after.find(path);
        if (liesAtOrBelow(path, expected.gone)) {
            if (other != after.end()) found.push_back(terminalText(path) + ": is still there");
            continue;
        }
        if (other == after.end()) {
            found.push_back(terminalText(path) + ": is missing");
            continue;
        }
        compare(path, entry, other->second, entry.isFolder && expected.touchedFolders.contains(path), found);
        if (namesBefore.at(entry.identity) != namesAfter.at(other->second.identity))
            found.push_back(terminalText(path) + ": is no longer a name of the same file");
    }
    for (const auto& [path, entry] : after)
        if (!before.contains(path)) found.push_back(terminalText(path) + ": is new");
    return found;
}

}  // namespace tavrin::example
