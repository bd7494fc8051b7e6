import QtQuick
import QtQuick.Window
import Tavrin.Theme

/**
 * The gem. It appears facet by facet and then pulses; with `animate` false, or where less motion is wanted, it stands.
 *
 * GemLogo { width: 76; height: 76; animate: false }
 */
Item {
    id: root

    property bool animate: true
    /// Nothing runs while nobody can see it.
    readonly property bool moves: animate && visible && !Theme.reducedMotion && Window.visibility !== Window.Hidden
                                  && Window.visibility !== Window.Minimized
    property real pulse: 0
    /// It has appeared: it does so once, and not again each time that its window comes back.
    property bool appeared: false

    implicitWidth: 96
    implicitHeight: 96

    Accessible.ignored: true

    Image {
        anchors.centerIn: parent
        width: root.width * 1.5
        height: root.height * 1.5
        opacity: 0.1 + 0.14 * root.pulse
        source: "image://glow/halo/" + String(Brand.ink).slice(1)
    }
    GemPainting {
        id: gem

        anchors.fill: parent
    }
    NumberAnimation {
        target: gem
        property: "elapsed"
        running: root.moves && !root.appeared
        from: 0
        to: gem.completeAfter
        duration: gem.completeAfter * 1000
        onStopped: {
            gem.elapsed = gem.completeAfter
            root.appeared = true
        }
    }
    SequentialAnimation {
        running: root.moves && root.appeared
        loops: Animation.Infinite
        NumberAnimation { target: root; property: "pulse"; to: 1; duration: Theme.pulseDuration; easing.type: Easing.InOutQuad }
        NumberAnimation { target: root; property: "pulse"; to: 0; duration: Theme.pulseDuration; easing.type: Easing.InOutQuad }
    }
}
