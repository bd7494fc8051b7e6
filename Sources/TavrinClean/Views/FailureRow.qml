import QtQuick
import Tavrin.Theme

/**
 * One path that couldn't be removed, and why.
 *
 * FailureRow { name: row.name; reason: row.reason; path: row.path }
 */
Item {
    id: root

    required property string name
    required property string reason
    /// Where it lies: several may bear one name.
    required property string path
    /// The keyboard is on this row.
    property bool current: false

    signal pressed()

    implicitHeight: words.implicitHeight + 16

    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: reason + " · " + path

    FocusRing { shown: root.current && root.activeFocus; gap: -1 }
    HoverHandler { id: hover }
    TapHandler { onPressedChanged: if (pressed) root.pressed() }
    HelpTip { wanted: hover.hovered || (root.current && root.activeFocus); text: root.path }

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
