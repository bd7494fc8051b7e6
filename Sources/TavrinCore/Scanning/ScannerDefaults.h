// The parameters that each scanner starts with: the one place where they are written down.
//
// What isn't here is nil in the factory, and the scanner's own initialiser fills it in. Folders are names below the
// home, or below ~/Library where it says so.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string_view>

namespace tavrin::scannerDefaults {

/// Where apps are looked for by all scanners that look for apps; the second stands below the home.
inline constexpr std::string_view systemApplications = "/Applications";
inline constexpr std::string_view userApplications = "Applications";

struct SystemJunk {
    /// The privileged sources exist in the scanner, and nothing made by the factory reaches them.
    static constexpr bool includePrivileged = false;
};

struct Duplicates {
    /// Those that exist, in this order.
    static constexpr std::array<std::string_view, 6> roots{"Downloads", "Documents", "Desktop",
                                                           "Pictures",  "Movies",    "Music"};
    static constexpr std::int64_t minimumSizeBytes = 1024;
};

struct LargeFiles {
    static constexpr std::array<std::string_view, 7> roots{"Desktop", "Documents", "Downloads", "Movies",
                                                           "Music",   "Pictures",  "Public"};
    static constexpr std::int64_t largeThresholdBytes = 104'857'600;  // 100 MiB
    static constexpr std::chrono::seconds staleInterval{31'536'000};  // 365 days
    static constexpr bool includeTrash = true;
};

struct Uninstaller {
    /// Below ~/Library.
    static constexpr std::array<std::string_view, 8> leftoverRoots{
        "Application Support",     "Caches",       "Preferences", "Containers", "Logs",
        "Saved Application State", "HTTPStorages", "WebKit"};
};

struct SimilarImages {
    /// Those that exist, in this order.
    static constexpr std::array<std::string_view, 4> roots{"Pictures", "Downloads", "Desktop", "Documents"};
    /// Bits of 64 in which two hashes may differ.
    static constexpr int threshold = 10;
    static constexpr std::int64_t minimumSizeBytes = 10'240;
};

struct AppLanguages {
    /// Kept besides the user's own languages.
    static constexpr std::array<std::string_view, 2> alwaysKept{"Base", "en"};
};

struct LoginItems {
    static constexpr bool includePrivileged = false;
};

struct DeveloperJunk {
    static constexpr std::array<std::string_view, 9> projectRoots{"Developer", "Projects", "Code", "code",     "src",
                                                                  "repos",     "Sites",    "work", "Documents"};
    static constexpr int maxDepth = 6;
    static constexpr std::array<std::string_view, 6> buildDirNames{"node_modules", ".build", "Pods",
                                                                   "DerivedData",  ".next",  ".nuxt"};
};

struct Screenshots {
    static constexpr std::array<std::string_view, 5> prefixes{"screenshot", "screen recording", "captura de pantalla",
                                                              "grabación de pantalla", "grabacion de pantalla"};
    static constexpr std::array<std::string_view, 7> extensions{"png", "jpg", "jpeg", "heic", "gif", "tiff", "mov"};
};

struct DownloadsJunk {
    static constexpr int staleAfterDays = 90;
    static constexpr std::array<std::string_view, 8> installerExtensions{"dmg", "pkg", "iso", "zip",
                                                                         "gz",  "tar", "tgz", "rar"};
};

struct BrowserCaches {
    static constexpr std::int64_t minSizeBytes = 1'000'000;
};

struct IOSBackups {
    /// Below ~/Library.
    static constexpr std::array<std::string_view, 3> backupRoot{"Application Support", "MobileSync", "Backup"};
};

struct MessagesAttachments {
    static constexpr std::int64_t minSizeBytes = 5'000'000;
    /// Below ~/Library.
    static constexpr std::array<std::string_view, 2> root{"Messages", "Attachments"};
};

struct UnusedApps {
    static constexpr int unusedAfterDays = 180;
};

}  // namespace tavrin::scannerDefaults
