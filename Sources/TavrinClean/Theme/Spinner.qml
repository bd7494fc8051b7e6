pragma ComponentBehavior: Bound
import QtQuick
import Tavrin.Theme

/**
 * Something small is under way. With less motion it stands still.
 *
 * Spinner { name: S.windowPuttingBack }
 */
Item {
    id: root

    /// What is under way, for screen readers.
    required property string name
    property real size: 20
    property color tint: Brand.gold
    readonly property int dots: 8

    implicitWidth: size
    implicitHeight: size

    Accessible.role: Accessible.Animation
    Accessible.name: name

    Item {
        id: wheel

        /// The dot that leads.
        property int step

        anchors.fill: parent
        rotation: step * 360 / root.dots

        NumberAnimation on step {
            running: root.visible && !Theme.reducedMotion
            loops: Animation.Infinite
            from: 0
            to: root.dots
            duration: Theme.pulseDuration
        }
        Repeater {
            model: root.dots

            Rectangle {
                id: dot

                required property int index
                readonly property real angle: index * 2 * Math.PI / root.dots

                width: root.size * 0.2
                height: width
                radius: width / 2
                x: (root.size - width) / 2 * (1 + Math.sin(angle))
                y: (root.size - width) / 2 * (1 - Math.cos(angle))
                color: root.tint
                opacity: 0.15 + 0.85 * index / (root.dots - 1)
            }
        }
    }
}
