// The names under which QML reads a row of results, the same in the list, the gallery and the list of languages.
#pragma once

#include <QByteArray>
#include <QHash>
#include <Qt>

namespace tavrin {

enum RowRole {
    // Of every row.

    /// ResultsModel::Kind.
    KindRole = Qt::UserRole + 1,
    /// Unique among all rows, and the same in every order: what the keyboard and actions hold on to.
    RowIdRole,
    /// The text of the row: a group's title, a finding's name, an entry's name, a note. Safe to show in one line.
    NameRole,
    /// Formatted; empty for a note.
    SizeTextRole,
    /// A file URL in absolute form, for icons, the preview and the file manager; empty for groups and notes.
    UrlRole,
    /// A folder, so drawn as one.
    IsDirectoryRole,

    // Of a group.

    GroupIdRole,
    /// Findings in it, and those ticked; under a search those that match.
    ItemCountRole,
    SelectedCountRole,
    /// Qt::CheckState: none, some or all of its findings are ticked.
    CheckStateRole,
    CollapsedRole,
    /// The list of languages: nothing of it is ticked, so it stays.
    KeptRole,
    /// The list of languages: how many apps and how much.
    SummaryRole,
    /// The gallery: a model of the group's findings (GroupItemsModel).
    ItemsRole,

    // Of a finding.

    ItemIdRole,
    SelectedRole,
    /// The member of its group that is proposed to stay.
    KeeperRole,
    /// It stands in a group of its scanner's.
    GroupedRole,
    /// The line under the name; empty where there is none.
    DetailRole,
    /// The languages of an app: the folder's own name, shown under the language.
    FolderNameRole,
    IsImageRole,
    /// It can be opened and shows what lies in it.
    ExpandableRole,
    ExpandedRole,
    /// The day it arrived; empty for modules that don't show it and for findings without one.
    DateTextRole,
    /// Its app runs: the warning to show; empty otherwise.
    RunningWarningRole,
    /// Mail: the badge's text; empty for everything else.
    MailBadgeRole,
    /// Mail: it comes back by itself, so the badge is the green one.
    MailRedownloadsRole,
};

/// kind, rowId, name, sizeText, url, isDirectory, groupId, itemCount, selectedCount, checkState, collapsed, kept,
/// summary, items, itemId, selected, keeper, grouped, detail, folderName, isImage, expandable, expanded, dateText,
/// runningWarning, mailBadge, mailRedownloads.
[[nodiscard]] QHash<int, QByteArray> rowRoleNames();

}  // namespace tavrin
