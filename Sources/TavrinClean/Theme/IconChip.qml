import QtQuick
import Tavrin.Theme

/**
 * A symbol on a rounded square.
 *
 * IconChip { symbol: "sparkles"; gold: true; size: 52 }
 */
Item {
    id: root

    required property string symbol
    property bool gold: false
    property real size: 36

    implicitWidth: size
    implicitHeight: size

    Plate {
        anchors.fill: parent
        radius: root.size * 0.28
        color: root.gold ? Brand.goldHi : Brand.white(0.12)
        endColor: root.gold ? Brand.gold : Brand.clear
        strokeColor: Brand.white(root.gold ? 0.3 : 0.1)
        strokeWidth: 1
    }
    Symbol {
        anchors.centerIn: parent
        key: root.symbol
        size: Math.round(root.size * 0.45)
        color: root.gold ? Brand.purple : Brand.ink
    }
}
