import QtQuick
import Tavrin.Theme

/**
 * The surface that things lie on. Its content is a child; the card takes its size from whoever places it.
 *
 * BrandCard { highlighted: hover.hovered; Row { ... } }
 */
Item {
    id: root

    property bool highlighted: false
    property real cornerRadius: Theme.radiusCard

    Glow {
        radius: root.cornerRadius
        color: root.highlighted ? Brand.gold : Brand.black(1)
        strength: root.highlighted ? 0.35 : 0.2
    }
    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: Brand.white(root.highlighted ? 0.1 : 0.05)
        border.width: root.highlighted ? 1.2 : 1
        border.color: root.highlighted ? Brand.faded(Brand.gold, 0.55) : Brand.white(0.1)
    }
}
