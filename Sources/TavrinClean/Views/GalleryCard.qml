import QtQuick
import Tavrin.Kit
import Tavrin.Theme

// The components in it are its own, and see its ids; a loader of this release can't make them where that is declared.
// qmllint disable unqualified

/**
 * One set of similar pictures.
 */
FocusScope {
    id: root

    required property string name
    required property string sizeText
    required property int itemCount
    required property GroupItemsModel items
    /// The picture that the keyboard is on; -1 for none here.
    property int currentCell: -1

    readonly property int least: 124
    readonly property int gap: Theme.spacing
    readonly property real inner: column.columnWidth - 2 * Theme.spacingLarge
    readonly property int columns: Math.max(1, Math.floor((inner + gap) / (least + gap)))
    readonly property real cellWidth: (inner - (columns - 1) * gap) / columns
    readonly property int cellHeight: 138
    readonly property int rows: Math.ceil(itemCount / columns)

    signal toggled(string itemId)
    signal menuWanted(string url, Item cell, point place)
    signal pressed(int cell)

    function cellAt(index) {
        return cells.item?.cellAt(index) ?? null
    }

    function cellTop(index) {
        return grid.y + Math.floor(index / columns) * (cellHeight + gap)
    }

    implicitHeight: grid.y + rows * (cellHeight + gap) - gap + Theme.spacingLarge

    Accessible.role: Accessible.Grouping
    Accessible.name: name
    Accessible.description: sizeText

    ReadableColumn {
        id: column

        anchors.fill: parent

        BrandCard {
            anchors.fill: parent

            BrandText {
                id: heading

                anchors { left: parent.left; leftMargin: Theme.spacingLarge; right: size.left; rightMargin: Theme.spacing; top: parent.top; topMargin: 14 }
                text: root.name
                font: Theme.headline
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            BrandText {
                id: size

                anchors { right: parent.right; rightMargin: Theme.spacingLarge; baseline: heading.baseline }
                text: root.sizeText
                font: Theme.bodySemibold
                color: Brand.gold
                Accessible.ignored: true
            }
            Item {
                id: grid

                x: Theme.spacingLarge
                y: 46
                width: root.inner
                height: parent.height - y - Theme.spacingLarge

                // A set may have thousands of pictures: they are made in the gaps between frames.
                Loader {
                    id: cells

                    anchors.fill: parent
                    asynchronous: root.itemCount > 60
                    focus: true
                    sourceComponent: Component {
                        GalleryCells {
                            focus: true
                            items: root.items
                            columns: root.columns
                            cellWidth: root.cellWidth
                            cellHeight: root.cellHeight
                            gap: root.gap
                            currentCell: root.currentCell
                            onToggled: itemId => root.toggled(itemId)
                            onMenuWanted: (url, cell, place) => root.menuWanted(url, cell, place)
                            onPressed: cell => root.pressed(cell)
                        }
                    }
                }
            }
        }
    }
}
