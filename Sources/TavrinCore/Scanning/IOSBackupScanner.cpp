#include "TavrinCore/Scanning/IOSBackupScanner.h"

#include "TavrinCore/Platform/FileStatus.h"
#include "TavrinCore/Scanning/DetailText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/PropertyList.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Strings.h"

namespace tavrin {
namespace {

/// A backup's Info.plist holds the icon and the receipt of every app on the device: some megabytes are ordinary.
constexpr PropertyListLimits kLimits{.maxBytes = std::size_t{32} << 20U, .maxContentBytes = std::size_t{64} << 20U};

/// Without values where the file is no property list.
PropertyList readList(const URL& backup, std::string_view name) {
    return PropertyList::fromFile(backup.appendingPathComponent(name), kLimits).value_or(PropertyList());
}

std::string deviceName(const PropertyList& info) {
    for (const std::string_view key : {"Device Name", "Display Name"}) {
        if (const std::string* name = info.string(key); name != nullptr) return detailName(*name);
    }
    return S::detailIOSDevice();
}

std::optional<Date> backupDate(const URL& backup, const PropertyList& info, const PropertyList& status) {
    if (const std::optional<Date> date = status.date("Date")) return date;
    if (const std::optional<Date> date = info.date("Last Backup Date")) return date;
    const Result<FileStatus> folder = fileStatus(backup);
    return folder ? folder->modified : std::nullopt;
}

}  // namespace

IOSBackupScanner::IOSBackupScanner(std::optional<URL> backupRoot)
    : backupRoot_(backupRoot ? *std::move(backupRoot)
                             : FileSystemUtils::homeLibrary(scannerDefaults::IOSBackups::backupRoot)) {}

std::string IOSBackupScanner::describe(const URL& backup) {
    const PropertyList info = readList(backup, "Info.plist");
    const PropertyList status = readList(backup, "Status.plist");
    std::string text = deviceName(info);
    if (const std::string* model = info.string("Product Name"); model != nullptr)
        text.append(" (").append(detailName(*model)).append(")");
    return detailWithDate(text, backupDate(backup, info, status));
}

std::vector<CleanableItem> IOSBackupScanner::scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const {
    if (!FileSystemUtils::exists(backupRoot_)) return {};
    ScanRun run(progress, isCancelled);
    for (const URL& child : run.children(backupRoot_)) {
        run.throwIfCancelled();
        if (!child.hasDirectoryPath()) continue;
        run.report({.phase = S::scanMeasuringBackup(),
                    .itemsFound = run.count(),
                    .currentPath = std::string(child.lastPathComponent())});
        const std::int64_t size = run.size(child);
        if (size < 1) continue;
        run.add({.id = UUID::random(),
                 .url = child,
                 .size = size,
                 .category = ScanCategory::deviceBackup,
                 .detail = describe(child)});
    }
    return run.finishLargestFirst(run.bytes());
}

}  // namespace tavrin
