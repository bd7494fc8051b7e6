import QtQuick
import Tavrin.Theme

/**
 * A line below an opened finding: an entry of it, or a note where `url` is empty.
 *
 * ChildRow { url: row.url; name: row.name; sizeText: row.size; isDirectory: false }
 */
Item {
    id: root

    required property string url
    required property string name
    required property string sizeText
    required property bool isDirectory
    property bool current: false

    readonly property bool isNote: url.length === 0

    signal preview()
    signal menuWanted(point place)
    signal pressed()

    implicitHeight: 34

    Accessible.role: isNote ? Accessible.StaticText : Accessible.ListItem
    Accessible.name: name
    Accessible.description: sizeText

    Rectangle {
        anchors { fill: parent; leftMargin: 58 }
        radius: Theme.radiusRow
        color: Brand.white(root.current ? 0.07 : hover.hovered && !root.isNote ? 0.04 : 0)
        FocusRing { shown: root.current && root.activeFocus; gap: -1 }
    }
    HoverHandler { id: hover }
    TapHandler {
        onPressedChanged: if (pressed) root.pressed()
        onDoubleTapped: if (!root.isNote) root.preview()
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => {
            root.pressed()
            root.menuWanted(eventPoint.position)
        }
    }
    // The line that ties it to its finding.
    Rectangle {
        x: 77
        width: 1
        height: parent.height
        color: Brand.white(0.12)
    }
    Symbol {
        id: icon

        x: 94
        anchors.verticalCenter: parent.verticalCenter
        visible: !root.isNote
        key: root.isDirectory ? "folder" : "doc"
        size: 16
        color: Brand.muted
    }
    Text {
        anchors { left: root.isNote ? icon.left : icon.right; leftMargin: root.isNote ? 0 : 8; right: size.left; rightMargin: Theme.spacing; verticalCenter: parent.verticalCenter }
        text: root.name
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        maximumLineCount: 1
        font: Theme.caption
        color: root.isNote ? Brand.muted : Brand.lavender
    }
    Text {
        id: size

        anchors { right: parent.right; rightMargin: 14; verticalCenter: parent.verticalCenter }
        text: root.sizeText
        textFormat: Text.PlainText
        font: Theme.caption
        color: Brand.muted
    }
}
