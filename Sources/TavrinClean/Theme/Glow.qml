import QtQuick
import Tavrin.Theme

/**
 * A shadow or a glow around the rounded rectangle that is its parent. Painted once and stretched.
 *
 * Glow { color: Brand.gold; radius: Theme.radiusCard; strength: 0.35 }
 */
BorderImage {
    id: root

    required property color color
    /// Of the rectangle that it surrounds, in whole points.
    required property int radius
    /// How far it reaches.
    property int blur: 14
    property real strength: 0.35

    readonly property int edge: radius + blur

    anchors.fill: parent
    anchors.margins: -blur
    // Behind its parent, where that is opaque.
    z: -1
    opacity: strength
    border { left: edge; right: edge; top: edge; bottom: edge }
    // The pieces are stretched across whole points: smoothing would blur the seams into view.
    source: "image://glow/" + radius + "/" + blur + "/" + String(Brand.faded(color, 1)).slice(1)
}
