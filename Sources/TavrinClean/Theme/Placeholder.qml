import QtQuick
import Tavrin.Theme

/**
 * What stands in the middle of a screen that has nothing to list.
 *
 * Placeholder { symbol: "checkmark.seal"; title: S.moduleNothingToClean }
 */
Column {
    id: root

    required property string symbol
    required property string title
    property string subtitle
    property color tint: Brand.gold
    property color tintEnd: Brand.clear
    property real symbolSize: 52

    spacing: Theme.spacing

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        key: root.symbol
        size: root.symbolSize
        color: root.tint
        endColor: root.tintEnd
    }
    BrandText {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, Math.min(560, root.parent ? root.parent.width - 2 * Theme.margin : 560))
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        text: root.title
        font: Theme.title3
    }
    BrandText {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, 380)
        visible: root.subtitle.length > 0
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        text: root.subtitle
        color: Brand.muted
    }
}
