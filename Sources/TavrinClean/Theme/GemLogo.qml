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
    /// It has appeared: it does so once, and not again each time that its window comes back.
    property bool appeared: false
    /// Each step is a frame that is drawn for ever; finer ones couldn't be told apart.
    readonly property int stepsOfPulse: 16
    property int step: 0
    /// From 0 to 1 and back, eased in and out.
    readonly property real pulse: {
        const time = step <= stepsOfPulse ? step / stepsOfPulse : 2 - step / stepsOfPulse
        return time < 0.5 ? 2 * time * time : 1 - 2 * (1 - time) * (1 - time)
    }

    implicitWidth: 96
    implicitHeight: 96

    Accessible.ignored: true

    Image {
        anchors.centerIn: parent
        width: root.width * 1.5
        height: root.height * 1.5
        opacity: 0.1 + 0.14 * root.pulse
        source: "image://glow/halo/" + String(Brand.ink).slice(1)
        // As large as it is shown: to stretch it in each frame takes longer than to draw it.
        sourceSize.width: Math.round(width * Screen.devicePixelRatio)
        sourceSize.height: Math.round(height * Screen.devicePixelRatio)
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
    // An animation would wake up four times as often.
    Timer {
        running: root.moves && root.appeared
        repeat: true
        interval: Theme.pulseDuration / root.stepsOfPulse
        onRunningChanged: if (!running) root.step = 0
        onTriggered: root.step = (root.step + 1) % (2 * root.stepsOfPulse)
    }
}
