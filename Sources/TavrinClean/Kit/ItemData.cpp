#include "TavrinClean/Kit/ItemData.h"

#include "TavrinClean/Kit/Arrangement.h"
#include "TavrinClean/Kit/ItemFacts.h"
#include "TavrinClean/Kit/ResultsModel.h"
#include "TavrinClean/Kit/Text.h"
#include "TavrinCore/Models/PercentEncoding.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/TextCase.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tavrin {
namespace {

constexpr std::array<std::string_view, 8> kImageExtensions{"png", "jpg", "jpeg", "heic", "gif", "tiff", "bmp", "webp"};

QString nameOf(const CleanableItem& item) {
    const bool isLanguage = item.category == ScanCategory::appLanguage;
    return isLanguage && item.detail ? qtLine(*item.detail) : qtLine(item.name());
}

/// Languages have it as their name, and mail has a badge in its place.
QString detailOf(const CleanableItem& item) {
    const bool elsewhere = item.category == ScanCategory::appLanguage || item.category == ScanCategory::mailAttachment;
    return elsewhere || !item.detail ? QString() : qtLine(*item.detail);
}

bool redownloads(const CleanableItem& item) {
    return item.category == ScanCategory::mailAttachment && item.groupID && item.groupID->starts_with("Outlook");
}

QString mailBadgeOf(const CleanableItem& item) {
    if (item.category != ScanCategory::mailAttachment) return {};
    return qtText(redownloads(item) ? S::moduleMailRedownloads() : S::moduleMailLocalCopy());
}

QString runningWarningOf(const CleanableItem& item, const ItemFact* fact) {
    if (fact == nullptr || !fact->running) return {};
    const bool isApp = item.category == ScanCategory::application;
    return qtText(isApp ? S::moduleRunningAppUninstallHelp() : S::moduleRunningAppHelp());
}

Qt::CheckState checkState(std::uint32_t selected, std::uint32_t count) {
    if (selected == 0) return Qt::Unchecked;
    return selected == count ? Qt::Checked : Qt::PartiallyChecked;
}

}  // namespace

QString groupHandle(const Findings& findings, std::uint32_t group) {
    return qtText(percentEncoded(findings.groupId(group)));
}

std::optional<std::uint32_t> groupWithHandle(const Findings& findings, const QString& handle) {
    const std::optional<std::string> id = percentDecoded(handle.toStdString());
    return id ? findings.groupWithId(*id) : std::nullopt;
}

QString groupRowId(const Findings& findings, std::uint32_t group) {
    return QStringLiteral("group ") + groupHandle(findings, group);
}

bool isImage(const CleanableItem& item) {
    if (item.category == ScanCategory::similarImage || item.category == ScanCategory::screenshot) return true;
    return std::ranges::find(kImageExtensions, lowercased(item.url.pathExtension())) != kImageExtensions.end();
}

QVariant itemRoleValue(const CleanableItem& item, const ItemFact* fact, int role) {
    switch (role) {
        case KindRole:
            return static_cast<int>(ResultsModel::Item);
        case RowIdRole:
        case ItemIdRole:
            return qtText(item.id.uuidString());
        case Qt::DisplayRole:
        case NameRole:
            return nameOf(item);
        case SizeTextRole:
            return qtText(ByteFormatter::string(item.size));
        case UrlRole:
            return qtText(item.url.absoluteString());
        case IsDirectoryRole:
        case ExpandableRole:
            return fact != nullptr ? fact->isDirectory : item.url.hasDirectoryPath();
        case KeeperRole:
            return item.isGroupKeeper;
        case GroupedRole:
            return item.groupID.has_value();
        case DetailRole:
            return detailOf(item);
        case FolderNameRole:
            return item.category == ScanCategory::appLanguage ? qtLine(item.name()) : QString();
        case IsImageRole:
            return isImage(item);
        case DateTextRole:
            return fact != nullptr ? qtText(fact->dateText) : QString();
        case RunningWarningRole:
            return runningWarningOf(item, fact);
        case MailBadgeRole:
            return mailBadgeOf(item);
        case MailRedownloadsRole:
            return redownloads(item);
        default:
            return emptyRoleValue(role);
    }
}

QVariant groupRoleValue(const Findings& findings, const ArrangedGroup& group, std::uint32_t selected, int role) {
    switch (role) {
        case KindRole:
            return static_cast<int>(ResultsModel::Group);
        case RowIdRole:
            return groupRowId(findings, group.group);
        case GroupIdRole:
            return groupHandle(findings, group.group);
        case Qt::DisplayRole:
        case NameRole:
            return qtLine(groupTitle(findings, group));
        case SizeTextRole:
            return qtText(ByteFormatter::string(group.totalBytes));
        case ItemCountRole:
            return group.count();
        case SelectedCountRole:
            return selected;
        case CheckStateRole:
            return static_cast<int>(checkState(selected, group.count()));
        case KeptRole:
            return selected == 0;
        case SummaryRole:
            return qtText(S::moduleAppsSize(group.count(), ByteFormatter::string(group.totalBytes)));
        default:
            return emptyRoleValue(role);
    }
}

QVariant emptyRoleValue(int role) {
    switch (role) {
        case IsDirectoryRole:
        case CollapsedRole:
        case KeptRole:
        case SelectedRole:
        case KeeperRole:
        case GroupedRole:
        case IsImageRole:
        case ExpandableRole:
        case ExpandedRole:
        case MailRedownloadsRole:
            return false;
        case KindRole:
        case ItemCountRole:
        case SelectedCountRole:
        case CheckStateRole:
            return 0;
        case ItemsRole:
            return {};
        default:
            return role >= KindRole ? QVariant(QString()) : QVariant();
    }
}

}  // namespace tavrin
