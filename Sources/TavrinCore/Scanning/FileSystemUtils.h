// The one door through which scanners, cleaner and disk map measure and walk the disk.
//
// None of it fails: what can't be read is an empty list, a zero, a nil, or a refusal recorded in `denials`. No state;
// safe from any thread; every callback runs on the caller's.
#pragma once

#include "TavrinCore/Models/Models.h"
#include "TavrinCore/Scanning/AccessDenials.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

class WalkEntry;
struct FileStatus;

/// One regular file as a walk hands it over.
struct FileInfo {
    URL url;
    /// The measure: bytes the file occupies on disk.
    std::int64_t size = 0;
    std::optional<Date> modified;
    std::optional<Date> accessed;

    friend bool operator==(const FileInfo&, const FileInfo&) = default;
};

/// How enumerateRegularFiles walks.
struct EnumerationOptions {
    /// Enter bundles (an .app, a .photoslibrary) as if they were plain folders.
    bool descendIntoPackages = false;
    /// Visit what begins with a dot, and walk such folders.
    bool includeHidden = false;
};

class FileSystemUtils {
  public:
    FileSystemUtils() = delete;

    /// The user's home folder. Read each time.
    [[nodiscard]] static URL home();
    /// ~/Library, or what the components name below it.
    [[nodiscard]] static URL homeLibrary(std::initializer_list<std::string_view> components = {});
    [[nodiscard]] static URL homeLibrary(std::span<const std::string_view> components);

    /// Follows links: a dangling one counts as missing.
    [[nodiscard]] static bool exists(const URL& url);
    /// Whether the file system says that nothing stands there. False also where it doesn't let us look: what can't be
    /// seen may well be there.
    [[nodiscard]] static bool isGone(const URL& url);
    /// Those of the folders of these names, below `parent`, at which there is something; in their order.
    [[nodiscard]] static std::vector<URL> existingFolders(const URL& parent, std::span<const std::string_view> names);
    /// Without the links among them that lead to where another one leads, into it, or above it: what lies there would
    /// be met twice. A folder stays whatever leads to it; of links, the one that leads to the outer folder, and of
    /// those to one folder the first. Without those too that lead to the home, above it, or into ~/Library: nobody who
    /// links a folder there means its files to be scanned. In their order, and as they were called.
    [[nodiscard]] static std::vector<URL> distinctRoots(const std::vector<URL>& roots);
    /// Whether `url` itself is a folder. A link to one is none.
    [[nodiscard]] static bool isFolder(const URL& url);

    /// What `url` occupies on disk; a folder with all that lies in it, hidden files and bundles included. Links are not
    /// followed, hard links count at each path. 0 for what doesn't exist, and for a mount that may keep us waiting.
    /// Once cancelled, the sum so far: ask again.
    [[nodiscard]] static std::int64_t size(const URL& url, AccessDenials* denials = nullptr,
                                           const CancellationCallback& isCancelled = neverCancelled);

    /// Sizes added up. They are the file system's word and may be any number, so the sum ends at the largest there is.
    [[nodiscard]] static std::int64_t sumOfSizes(std::int64_t a, std::int64_t b);

    /// The direct children in the file system's own order; folders are marked as such. Mounts that may keep whoever
    /// asks them anything waiting are left out. Once cancelled, those so far: ask again.
    [[nodiscard]] static std::vector<URL> children(const URL& folder, bool includeHidden,
                                                   AccessDenials* denials = nullptr,
                                                   const CancellationCallback& isCancelled = neverCancelled);

    /// Visits each regular file below `root`, in the file system's own order. Links, folders and specials are not
    /// visited. A root that is a link to a folder is walked as that folder, as people move their Documents to another
    /// disk; what lies in it keeps the path below the link. Stops without a word once cancelled.
    static void enumerateRegularFiles(const URL& root, EnumerationOptions options, AccessDenials* denials,
                                      const CancellationCallback& isCancelled,
                                      const std::function<void(const FileInfo&)>& visit);
    /// The same walk for those who want more than a FileInfo, or less: the status has dates and identifier, and
    /// `entry.url()` is made when it is asked for.
    static void enumerateRegularFileEntries(const URL& root, EnumerationOptions options, AccessDenials* denials,
                                            const CancellationCallback& isCancelled,
                                            const std::function<void(const WalkEntry&, const FileStatus&)>& visit);

    /// Whether listing `folder` is refused for lack of permission. A missing folder is not refused.
    [[nodiscard]] static bool isPermissionDenied(const URL& folder);

    /// SHA-256 of the first `prefix` bytes in lower-case hexadecimal. Nil only when the file can't be opened; one that
    /// opens and can't be read counts as empty.
    [[nodiscard]] static std::optional<std::string> quickFingerprint(const URL& file, std::size_t prefix);
    /// SHA-256 of the whole file, or of what could be read. Nil when it can't be opened, or once cancelled.
    [[nodiscard]] static std::optional<std::string> fullHash(const URL& file, std::size_t chunkSize,
                                                             const CancellationCallback& isCancelled = neverCancelled);
};

}  // namespace tavrin
