import QtQuick
import Tavrin.Kit
import Tavrin.Theme

// The components in it are its own, and see its ids; a loader of this release can't make them where that is declared.
// qmllint disable unqualified

/**
 * One row of the results, of whatever kind.
 */
FocusScope {
    id: root

    required property int index
    required property int kind
    required property string rowId
    required property string name
    required property string sizeText
    required property string url
    required property bool isDirectory
    required property string groupId
    required property int checkState
    required property bool collapsed
    required property string itemId
    required property bool selected
    required property string detail
    required property string folderName
    required property bool isImage
    required property bool expandable
    required property bool expanded
    required property string dateText
    required property string runningWarning
    required property string mailBadge
    required property bool mailRedownloads
    /// The keyboard is on this row.
    property bool current: false

    signal ticked()
    signal opened()
    signal expandToggled()
    signal preview()
    signal menuWanted(point place)
    signal pressed()

    readonly property real inset: (width - Math.min(width - 2 * Theme.margin, Theme.readableWidth)) / 2 - 8

    // The list keeps rows that left it for later use; meanwhile they must not be found by a screen reader.
    property bool inUse: true
    visible: inUse
    ListView.onPooled: inUse = false
    ListView.onReused: inUse = true

    implicitHeight: kind === ResultsModel.Group ? 48 : kind === ResultsModel.Item ? 52 : 34

    // The list uses a row again for another finding, and often for one of another kind. What a row has shown once is kept
    // for the next time: to make it anew takes longer than everything else in a frame.
    component Part: Loader {
        property bool wanted: false

        anchors { fill: parent; leftMargin: root.inset; rightMargin: root.inset }
        focus: wanted
        visible: wanted
        active: false
        onWantedChanged: if (wanted) active = true
    }

    Part {
        wanted: root.kind === ResultsModel.Item
        sourceComponent: Component {
            ItemRow {
                focus: true
                url: root.url
                name: root.name
                detail: root.folderName.length > 0 ? root.folderName : root.detail
                detailIsPath: root.folderName.length > 0
                sizeText: root.sizeText
                ticked: root.selected
                isFolder: root.expandable
                isImage: root.isImage
                runningHelp: root.runningWarning
                mailBadge: root.mailBadge
                redownloads: root.mailRedownloads
                date: root.dateText
                expanded: root.expanded
                current: root.current
                onToggled: root.ticked()
                onExpandToggled: root.expandToggled()
                onPreview: root.preview()
                onMenuWanted: place => root.menuWanted(mapToItem(root, place.x, place.y))
                onPressed: root.pressed()
            }
        }
    }
    Part {
        wanted: root.kind === ResultsModel.Group
        sourceComponent: Component {
            GroupHeader {
                focus: true
                title: root.name
                sizeText: root.sizeText
                checkState: root.checkState
                folded: root.collapsed
                current: root.current
                onTicked: root.ticked()
                onFoldToggled: root.opened()
                onPressed: root.pressed()
            }
        }
    }
    Part {
        wanted: root.kind === ResultsModel.Child || root.kind === ResultsModel.Note
        sourceComponent: Component {
            ChildRow {
                focus: true
                url: root.url
                name: root.name
                sizeText: root.sizeText
                isDirectory: root.isDirectory
                current: root.current
                onPreview: root.preview()
                onMenuWanted: place => root.menuWanted(mapToItem(root, place.x, place.y))
                onPressed: root.pressed()
            }
        }
    }
}
