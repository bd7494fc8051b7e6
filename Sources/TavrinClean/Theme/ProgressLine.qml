import QtQuick
import Tavrin.Theme

/**
 * How far something has come, or that it goes on.
 *
 * ProgressLine { name: progress.phase; value: progress.fraction; indeterminate: !progress.known }
 */
Item {
    id: root

    /// What is under way, for screen readers.
    required property string name
    /// From 0 to 1.
    property real value: 0
    property bool indeterminate: false
    property color tint: Brand.gold

    readonly property real fraction: Math.max(0, Math.min(1, value))

    implicitWidth: 240
    implicitHeight: 6

    Accessible.role: Accessible.ProgressBar
    Accessible.name: name
    // The bar hands no value to screen readers by itself.
    Accessible.description: indeterminate ? "" : Math.floor(fraction * 100) + "%"

    Plate {
        anchors.fill: parent
        radius: height / 2
        color: Brand.white(0.12)
    }
    Plate {
        visible: !root.indeterminate && root.fraction > 0
        width: Math.max(root.height, root.width * root.fraction)
        height: root.height
        radius: height / 2
        color: root.tint
    }
    Plate {
        id: runner

        // With less motion it stands still in the middle: the text says what goes on.
        property real place: 0.5

        visible: root.indeterminate
        x: (root.width - width) * place
        width: Math.max(root.height, root.width * 0.3)
        height: root.height
        radius: height / 2
        color: root.tint

        SequentialAnimation {
            running: root.indeterminate && root.visible && !Theme.reducedMotion
            loops: Animation.Infinite
            NumberAnimation { target: runner; property: "place"; from: 0; to: 1; duration: Theme.pulseDuration; easing.type: Easing.InOutSine }
            NumberAnimation { target: runner; property: "place"; from: 1; to: 0; duration: Theme.pulseDuration; easing.type: Easing.InOutSine }
        }
    }
}
