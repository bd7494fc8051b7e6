pragma ComponentBehavior: Bound
import QtQuick
import Tavrin.Kit
import Tavrin.Theme

/**
 * The pictures of one set, in columns.
 */
FocusScope {
    id: root

    required property GroupItemsModel items
    required property int columns
    required property real cellWidth
    required property int cellHeight
    required property int gap
    /// The picture that the keyboard is on; -1 for none.
    required property int currentCell

    signal toggled(string itemId)
    signal menuWanted(string url, Item cell, point place)
    signal pressed(int cell)

    function cellAt(index) {
        return cells.itemAt(index)
    }

    Repeater {
        id: cells

        model: root.items

        ImageCell {
            id: cell

            required property int index
            required property string itemId
            required property bool selected

            x: (index % root.columns) * (root.cellWidth + root.gap)
            y: Math.floor(index / root.columns) * (root.cellHeight + root.gap)
            width: root.cellWidth
            height: root.cellHeight
            focus: index === root.currentCell
            current: index === root.currentCell
            ticked: selected
            onToggled: root.toggled(itemId)
            onPreview: QuickLook.show(url)
            onMenuWanted: place => root.menuWanted(url, cell, place)
            onPressed: root.pressed(index)
        }
    }
}
