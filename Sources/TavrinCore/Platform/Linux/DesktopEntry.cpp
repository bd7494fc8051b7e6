// The folders: XDG Base Directory Specification 0.8.
#include "TavrinCore/Platform/Linux/DesktopEntry.h"

#include "TavrinCore/Platform/Folders.h"
#include "TavrinCore/Platform/ReadFile.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/InstalledApps.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string>

namespace tavrin {
namespace {

constexpr std::string_view kDefaultDataFolders = "/usr/local/share:/usr/share";
constexpr std::array<std::string_view, 2> kBesides{"/var/lib/flatpak/exports/share", "/var/lib/snapd/desktop"};
/// More bytes, or more dashes in a name, has no entry that a program wrote.
constexpr std::size_t kMostBytes = std::size_t{1} << 20U;
constexpr std::size_t kMostDashes = 8;

struct FreeGLib {
    void operator()(void* memory) const { g_free(memory); }
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
    void operator()(char** words) const { g_strfreev(words); }
};

std::string_view dataFolders() {
    const char* value = std::getenv("XDG_DATA_DIRS");  // NOLINT(concurrency-mt-unsafe): nobody writes the environment
    return value != nullptr && *value != '\0' ? value : kDefaultDataFolders;
}

/// The identifier as a path: `slashes` has a bit for each dash, the first being the lowest.
std::string withSlashes(std::string_view identifier, unsigned slashes) {
    std::string path(identifier);
    for (std::size_t dash = path.find('-'); slashes != 0 && dash != std::string::npos; slashes >>= 1U) {
        const std::size_t next = path.find('-', dash + 1);
        if ((slashes & 1U) != 0) path[dash] = '/';
        dash = next;
    }
    return path;
}

/// What the key Exec holds; empty where there is none.
std::string commandOf(const URL& file) {
    const Result<std::string> text = readSmallFile(file, kMostBytes);
    if (!text) return {};
    const std::unique_ptr<GKeyFile, FreeGLib> keys(g_key_file_new());
    if (g_key_file_load_from_data(keys.get(), text->data(), text->size(), G_KEY_FILE_NONE, nullptr) == FALSE) return {};
    const std::unique_ptr<char, FreeGLib> command(
        g_key_file_get_string(keys.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_EXEC, nullptr));
    return command != nullptr ? command.get() : std::string();
}

/// The first word; empty where there is none.
std::string programOf(const std::string& command) {
    char** words = nullptr;
    if (g_shell_parse_argv(command.c_str(), nullptr, &words, nullptr) == FALSE) return {};
    const std::unique_ptr<char*, FreeGLib> owned(words);
    return words[0];
}

/// The outermost app that `program` lies in, or the program itself.
URL enclosingApp(const URL& program) {
    URL app = program;
    for (URL here = program; here.path() != "/"; here = here.deletingLastPathComponent()) {
        if (isApp(here)) app = here;
    }
    return app;
}

}  // namespace

std::vector<URL> desktopEntryFolders() {
    std::vector<URL> folders;
    const auto add = [&folders](const URL& dataFolder) {
        folders.push_back(dataFolder.appendingPathComponent("applications", true));
    };
    add(applicationSupportFolder());
    for (std::string_view rest = dataFolders(); !rest.empty();) {
        const std::size_t colon = std::min(rest.find(':'), rest.size());
        if (rest.starts_with('/')) add(URL::fromPath(rest.substr(0, colon), true));
        rest.remove_prefix(std::min(colon + 1, rest.size()));
    }
    add(homeFolder().appendingPathComponent(".local/share/flatpak/exports/share", true));
    for (std::string_view path : kBesides)
        add(URL::fromPath(path, true));
    return folders;
}

std::optional<URL> desktopEntryFile(std::string_view identifier, const std::vector<URL>& folders) {
    const auto dashes = static_cast<std::size_t>(std::count(identifier.begin(), identifier.end(), '-'));
    const unsigned spellings = 1U << std::min(dashes, kMostDashes);
    for (const URL& folder : folders) {
        for (unsigned slashes = 0; slashes < spellings; ++slashes) {
            URL file = folder.appendingPathComponent(withSlashes(identifier, slashes));
            if (FileSystemUtils::exists(file)) return file;
        }
    }
    return std::nullopt;
}

URL appOfDesktopEntry(const URL& file) {
    const std::string program = programOf(commandOf(file));
    return program.starts_with('/') ? enclosingApp(URL::fromPath(program).standardizedFileURL()) : file;
}

}  // namespace tavrin
