import QtQuick
import Tavrin.Theme
import Tavrin.Words

/**
 * One language: kept, or to be removed from every app. Its mark means the opposite of every other mark here.
 *
 * LanguageRow { name: row.name; summary: S.moduleAppsSize(n, size); kept: row.selectedCount === 0; onToggled: turn() }
 */
Item {
    id: root

    required property string groupId
    required property string name
    required property string summary
    required property bool kept
    property bool current: false

    signal toggled()
    signal pressed()

    implicitHeight: 52

    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.description: (kept ? S.actionKeep : S.actionRemove) + " · " + summary
    Accessible.checkable: true
    Accessible.checked: kept
    Accessible.onPressAction: toggled()
    Accessible.onToggleAction: toggled()

    Rectangle {
        anchors.fill: parent
        radius: Theme.radiusRow
        color: tap.pressed ? Brand.black(0.2) : Brand.white(hover.hovered ? 0.04 : 0)
        FocusRing { shown: root.current && root.activeFocus; gap: -1 }
    }
    HoverHandler { id: hover }
    TapHandler {
        id: tap

        onPressedChanged: if (pressed) root.pressed()
        onTapped: root.toggled()
    }

    Symbol {
        id: mark

        x: 12
        anchors.verticalCenter: parent.verticalCenter
        key: root.kept ? "checkmark.circle.fill" : "circle"
        size: 22
        color: root.kept ? Brand.gold : Brand.muted
    }
    Column {
        anchors { left: mark.right; leftMargin: Theme.spacing; right: state.left; rightMargin: Theme.spacing; verticalCenter: parent.verticalCenter }
        spacing: 2

        Text {
            width: parent.width
            text: root.name
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font: Theme.body
            color: Brand.ink
        }
        Text {
            width: parent.width
            text: root.summary
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font: Theme.caption
            color: Brand.muted
        }
    }
    Text {
        id: state

        anchors { right: parent.right; rightMargin: 14; verticalCenter: parent.verticalCenter }
        text: root.kept ? S.actionKeep : S.actionRemove
        textFormat: Text.PlainText
        font: Theme.captionSemibold
        color: root.kept ? Brand.lavender : Brand.danger
    }
}
