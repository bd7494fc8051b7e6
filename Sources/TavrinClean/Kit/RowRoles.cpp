#include "TavrinClean/Kit/RowRoles.h"

namespace tavrin {

QHash<int, QByteArray> rowRoleNames() {
    return {
        {KindRole, "kind"},
        {RowIdRole, "rowId"},
        {NameRole, "name"},
        {SizeTextRole, "sizeText"},
        {UrlRole, "url"},
        {IsDirectoryRole, "isDirectory"},
        {GroupIdRole, "groupId"},
        {ItemCountRole, "itemCount"},
        {SelectedCountRole, "selectedCount"},
        {CheckStateRole, "checkState"},
        {CollapsedRole, "collapsed"},
        {KeptRole, "kept"},
        {SummaryRole, "summary"},
        {ItemsRole, "items"},
        {ItemIdRole, "itemId"},
        {SelectedRole, "selected"},
        {KeeperRole, "keeper"},
        {GroupedRole, "grouped"},
        {DetailRole, "detail"},
        {FolderNameRole, "folderName"},
        {IsImageRole, "isImage"},
        {ExpandableRole, "expandable"},
        {ExpandedRole, "expanded"},
        {DateTextRole, "dateText"},
        {RunningWarningRole, "runningWarning"},
        {MailBadgeRole, "mailBadge"},
        {MailRedownloadsRole, "mailRedownloads"},
    };
}

}  // namespace tavrin
