import QtQuick
import Tavrin.Theme

/**
 * What a screen shows, in the middle of it and no wider than the eye can follow. Its children fill it as they like.
 *
 * Item { ReadableColumn { anchors.fill: parent; Text { anchors.fill: parent } } }
 */
Item {
    id: root

    default property alias content: column.data
    readonly property alias columnWidth: column.width

    Item {
        id: column

        anchors { top: parent.top; bottom: parent.bottom; horizontalCenter: parent.horizontalCenter }
        width: Math.min(root.width - 2 * Theme.margin, Theme.readableWidth)
    }
}
