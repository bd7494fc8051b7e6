import QtQuick
import Tavrin.Theme

// The components in it are its own, and see its ids; a loader of this release can't make them where that is declared.
// qmllint disable unqualified

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
        visible: !root.highlighted
        radius: root.cornerRadius
        color: Brand.white(0.05)
        border.width: 1
        border.color: Brand.white(0.1)
    }
    // Painted, since a rectangle draws its stroke in whole points; the other is the cheaper one where a card is long.
    Loader {
        anchors.fill: parent
        active: root.highlighted
        sourceComponent: Component {
            Plate {
                radius: root.cornerRadius
                color: Brand.white(0.1)
                strokeWidth: 1.2
                strokeColor: Brand.faded(Brand.gold, 0.55)
            }
        }
    }
}
