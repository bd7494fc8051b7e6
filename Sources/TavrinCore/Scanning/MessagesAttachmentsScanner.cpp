#include "TavrinCore/Scanning/MessagesAttachmentsScanner.h"

#include "TavrinCore/Scanning/DetailText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Strings.h"

#include <string>

namespace tavrin {

MessagesAttachmentsScanner::MessagesAttachmentsScanner(std::int64_t minSize, std::optional<URL> root)
    : minSize_(minSize),
      root_(root ? *std::move(root) : FileSystemUtils::homeLibrary(scannerDefaults::MessagesAttachments::root)) {}

std::vector<CleanableItem> MessagesAttachmentsScanner::scan(const ProgressCallback& progress,
                                                            const CancellationCallback& isCancelled) const {
    if (!FileSystemUtils::exists(root_)) return {};
    if (FileSystemUtils::isPermissionDenied(root_)) throw ScanError::accessDenied(root_);
    ScanRun run(progress, isCancelled);
    const auto look = [&](const FileInfo& file) {
        if (file.size < minSize_) return;
        run.report({.phase = S::scanMessagesAttachments(),
                    .itemsFound = run.count(),
                    .currentPath = std::string(file.url.lastPathComponent())});
        run.add({.id = UUID::random(),
                 .url = file.url,
                 .size = file.size,
                 .category = ScanCategory::messagesAttachment,
                 .detail = detailWithDate(S::categoryMessagesAttachment(), file.modified)});
    };
    FileSystemUtils::enumerateRegularFiles(root_, {}, &run.denials(), run.isCancelled(), look);
    run.throwIfCancelled();
    return run.finishLargestFirst(run.bytes());
}

}  // namespace tavrin
