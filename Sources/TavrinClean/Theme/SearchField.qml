import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme

/**
 * A line to search by. Esc empties it first, and is left to others once it is empty.
 *
 * SearchField { placeholder: S.searchPlaceholder; clearName: S.windowClearSearch; onTextChanged: list.search = text }
 */
T.TextField {
    id: root

    required property string placeholder
    /// What screen readers say of the cross that empties it.
    required property string clearName

    implicitWidth: 220
    implicitHeight: Theme.controlHeight
    leftPadding: 34
    rightPadding: 32
    verticalAlignment: TextInput.AlignVCenter
    font: Theme.body
    color: Brand.ink
    selectionColor: Brand.gold
    selectedTextColor: Brand.onGold
    placeholderText: placeholder
    placeholderTextColor: Brand.muted
    selectByMouse: true
    maximumLength: 200
    opacity: enabled ? 1 : 0.5

    Keys.onEscapePressed: event => {
        event.accepted = text.length > 0
        clear()
    }

    Accessible.role: Accessible.EditableText
    Accessible.name: placeholder
    Accessible.searchEdit: true

    background: Rectangle {
        radius: height / 2
        color: Brand.white(root.hovered || root.activeFocus ? 0.1 : 0.06)
        border.width: 1
        border.color: Brand.white(0.18)

        Symbol {
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            key: "magnifyingglass"
            size: 15
            color: Brand.muted
        }
        FocusRing { shown: root.activeFocus; around: root.height / 2; gap: 1 }
    }
    Text {
        x: root.leftPadding
        width: root.width - root.leftPadding - root.rightPadding
        anchors.verticalCenter: parent.verticalCenter
        visible: root.text.length === 0 && root.preeditText.length === 0
        text: root.placeholder
        textFormat: Text.PlainText
        elide: Text.ElideRight
        font: root.font
        color: Brand.muted
    }
    // Esc does the same by keyboard, so it isn't a stop of the Tab key.
    IconButton {
        anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
        visible: root.text.length > 0
        symbol: "xmark.circle.fill"
        name: root.clearName
        size: 15
        focusPolicy: Qt.NoFocus
        onClicked: {
            root.clear()
            root.forceActiveFocus()
        }
    }
}
