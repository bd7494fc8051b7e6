import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme

// The ids are wanted at once: nothing puts another item in the place of these.
// qmllint disable deferred-property-id

/**
 * What the three buttons share: a capsule with a symbol and a text, pressed by mouse, Enter, Space and screen readers. Use
 * GoldButton, GhostButton or DangerButton.
 */
T.Button {
    id: root

    /// The key of a symbol before the text; none while it is empty.
    property string symbol
    /// For the one button that a screen is about.
    property bool large: false
    property color tint: Brand.ink
    property color plateColor: Brand.clear
    property color plateEndColor: Brand.clear
    property color strokeColor: Brand.clear
    property color glowColor: Brand.clear
    property real glowStrength: 0
    /// Laid over it under the mouse. It must not bring the plate nearer to the text.
    property color hoverVeil: Brand.white(0.12)
    property real pressedOpacity: 1
    property real pressedScale: 1

    implicitHeight: large ? Theme.largeControlHeight : Theme.controlHeight
    implicitWidth: Math.ceil(label.implicitWidth) + leftPadding + rightPadding
    leftPadding: 18
    rightPadding: leftPadding
    font: Theme.bodySemibold
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    // With a disabled button the eye must not stop.
    opacity: !enabled ? 0.5 : down ? pressedOpacity : 1
    scale: down ? pressedScale : 1

    Behavior on opacity { NumberAnimation { duration: Theme.pressDuration; easing.type: Easing.OutQuad } }
    Behavior on scale { NumberAnimation { duration: Theme.pressDuration; easing.type: Easing.OutQuad } }

    // Once for each press. What comes next to where this stood, another record's button for one, isn't meant by a key that
    // is held, nor by the second half of a double click, which the toolkit keeps back from who listens to those.
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) clicked() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) clicked() }
    Keys.onSpacePressed: event => event.accepted = event.isAutoRepeat
    Keys.onReleased: event => event.accepted = event.isAutoRepeat && event.key === Qt.Key_Space
    onDoubleClicked: {}

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()

    background: Item {
        Glow {
            visible: root.glowStrength > 0 && root.enabled
            radius: Math.floor(root.height / 2)
            blur: 12
            color: root.glowColor
            strength: root.glowStrength
        }
        Plate {
            anchors.fill: parent
            radius: height / 2
            color: root.plateColor
            endColor: root.plateEndColor
            strokeColor: root.strokeColor
        }
        Rectangle {
            anchors.fill: parent
            radius: height / 2
            color: root.hoverVeil
            visible: root.hovered && !root.down && root.enabled
        }
        FocusRing { shown: root.visualFocus; around: root.height / 2 }
    }
    contentItem: Item {
        Row {
            id: label

            anchors.centerIn: parent
            spacing: Theme.spacingSmall

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.symbol.length > 0
                key: root.symbol
                size: root.large ? 18 : 16
                color: root.tint
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: root.text
                textFormat: Text.PlainText
                font: root.font
                color: root.tint
            }
        }
    }
}
