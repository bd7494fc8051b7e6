import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme

// The ids are wanted at once: nothing puts another item in the place of these.
// qmllint disable deferred-property-id

/**
 * A box to tick, with a text beside it or none. What it shows is `checkState`; whoever owns the fact changes it on `ticked`
 * and binds it, so the box never shows what isn't so.
 *
 * CheckMark { name: row.name; checkState: row.selected ? Qt.Checked : Qt.Unchecked; onTicked: model.toggle(row.id) }
 */
T.CheckBox {
    id: root

    /// What screen readers say; the text unless told otherwise.
    property string name: text
    property real size: 20

    signal ticked()

    implicitWidth: text.length > 0 ? size + Theme.spacingSmall + Math.ceil(measure.advanceWidth) : size + 8
    implicitHeight: Math.max(size + 8, contentItem.implicitHeight)
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    font: Theme.body
    opacity: enabled ? 1 : 0.5

    // A press alone changes nothing.
    nextCheckState: () => root.checkState
    onClicked: ticked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.checkable: true
    Accessible.checked: checkState === Qt.Checked
    Accessible.checkStateMixed: checkState === Qt.PartiallyChecked
    Accessible.onToggleAction: if (enabled) clicked()
    Accessible.onPressAction: if (enabled) clicked()

    TextMetrics {
        id: measure

        font: root.font
        text: root.text
    }
    background: Item {
        FocusRing { shown: root.visualFocus; gap: 1; around: Theme.radiusSmall }
    }
    contentItem: Item {
        implicitHeight: label.implicitHeight

        Symbol {
            id: box

            x: root.text.length > 0 ? 0 : (parent.width - width) / 2
            anchors.verticalCenter: parent.verticalCenter
            size: root.size
            key: root.checkState === Qt.Checked ? "checkmark.square.fill"
               : root.checkState === Qt.PartiallyChecked ? "minus.square.fill" : "square"
            color: root.checkState !== Qt.Unchecked ? (root.hovered ? Brand.goldHi : Brand.gold) : root.hovered ? Brand.ink : Brand.muted
            opacity: root.down ? 0.7 : 1
        }
        Text {
            id: label

            anchors { left: box.right; leftMargin: Theme.spacingSmall; right: parent.right; verticalCenter: parent.verticalCenter }
            visible: root.text.length > 0
            text: root.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            font: root.font
            color: Brand.ink
        }
    }
}
