import QtQuick
import Tavrin.Theme

/**
 * One path that couldn't be removed, and why.
 */
Item {
    id: root

    required property string name
    required property string reason

    implicitHeight: words.implicitHeight + 16

    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: reason

    Symbol {
        id: icon

        x: 8
        anchors.verticalCenter: parent.verticalCenter
        key: "xmark.circle"
        size: 18
        color: Brand.softWarning
    }
    Column {
        id: words

        anchors { left: icon.right; leftMargin: 10; right: parent.right; rightMargin: Theme.spacingLarge; verticalCenter: parent.verticalCenter }
        spacing: 1

        BrandText {
            width: parent.width
            text: root.name
            elide: Text.ElideMiddle
            maximumLineCount: 1
            Accessible.ignored: true
        }
        BrandText {
            width: parent.width
            text: root.reason
            font: Theme.caption
            color: Brand.muted
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }
}
