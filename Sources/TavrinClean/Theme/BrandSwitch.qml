import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme

/**
 * On or off, in gold. What it shows is `on`; whoever owns the fact changes it on `toggledByUser`.
 *
 * BrandSwitch { name: group.title; on: group.isOn; onToggledByUser: model.toggle(group.id) }
 */
// A check box to screen readers too, whose role a control takes from its type.
T.CheckBox {
    id: root

    required property string name
    property bool on: false

    signal toggledByUser()

    implicitWidth: 42
    implicitHeight: 26
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: !enabled ? 0.5 : down ? 0.82 : 1

    checkState: on ? Qt.Checked : Qt.Unchecked
    // A press alone changes nothing.
    nextCheckState: () => root.checkState
    onClicked: toggledByUser()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.checkable: true
    Accessible.checked: on
    Accessible.onToggleAction: if (enabled) clicked()
    Accessible.onPressAction: if (enabled) clicked()

    background: Item {
        Plate {
            anchors.fill: parent
            radius: height / 2
            color: root.on ? Brand.goldHi : Brand.white(root.hovered ? 0.18 : 0.12)
            endColor: root.on ? Brand.gold : Brand.clear
            strokeColor: Brand.white(root.hovered ? 0.5 : 0.3)
        }
        Plate {
            /// From 0 to 1, and not a position: that one changes while the switch is laid out, and it would slide for no reason.
            property real share: root.on ? 1 : 0

            x: 3 + share * (parent.width - width - 6)
            y: 3
            width: 20
            height: 20
            radius: 10
            color: root.on ? Brand.onGold : Brand.ink

            Behavior on share { NumberAnimation { duration: Theme.hoverDuration; easing.type: Easing.OutQuad } }
        }
        FocusRing { shown: root.visualFocus; around: root.height / 2 }
    }
}
