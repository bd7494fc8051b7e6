import QtQuick
import Tavrin.Theme

/**
 * A short figure or word in a tinted capsule.
 *
 * Capsule { text: size; tint: Brand.gold }
 */
Rectangle {
    id: root

    required property string text
    property string symbol
    property color tint: Brand.gold

    implicitWidth: Math.ceil(row.implicitWidth) + 16
    implicitHeight: 22
    radius: height / 2
    color: Brand.faded(tint, 0.15)

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 5

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol.length > 0
            key: root.symbol
            size: 13
            color: root.tint
        }
        Text {
            text: root.text
            textFormat: Text.PlainText
            font: Theme.captionSemibold
            color: root.tint
        }
    }
}
