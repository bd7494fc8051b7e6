#include "TavrinCore/ScannerFactory.h"

#include "TavrinCore/Scanning/AppLanguageScanner.h"
#include "TavrinCore/Scanning/AppUninstaller.h"
#include "TavrinCore/Scanning/BrowserCacheScanner.h"
#include "TavrinCore/Scanning/DeveloperJunkScanner.h"
#include "TavrinCore/Scanning/DownloadsJunkScanner.h"
#include "TavrinCore/Scanning/DuplicateScanner.h"
#include "TavrinCore/Scanning/IOSBackupScanner.h"
#include "TavrinCore/Scanning/LargeFilesScanner.h"
#include "TavrinCore/Scanning/LoginItemsScanner.h"
#include "TavrinCore/Scanning/MailAttachmentsScanner.h"
#include "TavrinCore/Scanning/MessagesAttachmentsScanner.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Scanning/ScreenshotsScanner.h"
#include "TavrinCore/Scanning/SimilarImagesScanner.h"
#include "TavrinCore/Scanning/SystemJunkScanner.h"
#include "TavrinCore/Scanning/UnusedAppsScanner.h"

#include <stdexcept>

namespace tavrin {

std::unique_ptr<Scanner> ScannerFactory::makeScanner(ModuleKind kind) {
    switch (kind) {
        case ModuleKind::systemJunk:
            return std::make_unique<SystemJunkScanner>(scannerDefaults::SystemJunk::includePrivileged);
        case ModuleKind::duplicates:
            return std::make_unique<DuplicateScanner>(std::nullopt, scannerDefaults::Duplicates::minimumSizeBytes);
        case ModuleKind::largeFiles:
            return std::make_unique<LargeFilesScanner>(std::nullopt, scannerDefaults::LargeFiles::largeThresholdBytes,
                                                       scannerDefaults::LargeFiles::staleInterval,
                                                       scannerDefaults::LargeFiles::includeTrash);
        case ModuleKind::uninstaller:
            return std::make_unique<AppUninstaller>();
        case ModuleKind::similarImages:
            return std::make_unique<SimilarImagesScanner>(std::nullopt, scannerDefaults::SimilarImages::threshold,
                                                          scannerDefaults::SimilarImages::minimumSizeBytes);
        case ModuleKind::appLanguages:
            return std::make_unique<AppLanguageScanner>();
        case ModuleKind::loginItems:
            return std::make_unique<LoginItemsScanner>(scannerDefaults::LoginItems::includePrivileged);
        case ModuleKind::developerJunk:
            return std::make_unique<DeveloperJunkScanner>(std::nullopt, std::nullopt,
                                                          scannerDefaults::DeveloperJunk::maxDepth);
        case ModuleKind::mailAttachments:
            return std::make_unique<MailAttachmentsScanner>();
        case ModuleKind::screenshots:
            return std::make_unique<ScreenshotsScanner>();
        case ModuleKind::downloadsJunk:
            return std::make_unique<DownloadsJunkScanner>(scannerDefaults::DownloadsJunk::staleAfterDays);
        case ModuleKind::browserCaches:
            return std::make_unique<BrowserCacheScanner>(scannerDefaults::BrowserCaches::minSizeBytes);
        case ModuleKind::iosBackups:
            return std::make_unique<IOSBackupScanner>();
        case ModuleKind::messagesAttachments:
            return std::make_unique<MessagesAttachmentsScanner>(scannerDefaults::MessagesAttachments::minSizeBytes);
        case ModuleKind::unusedApps:
            return std::make_unique<UnusedAppsScanner>(scannerDefaults::UnusedApps::unusedAfterDays);
    }
    throw std::logic_error("a module that isn't one of the fifteen");
}

}  // namespace tavrin
