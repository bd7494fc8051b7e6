import QtQuick
import Tavrin.Theme

/**
 * One thing to know before the start.
 *
 * ConsentBullet { symbol: "checkmark.shield.fill"; text: S.consentBulletYouDecide }
 */
Item {
    id: root

    required property string symbol
    required property string text

    width: parent ? parent.width : implicitWidth
    implicitHeight: Math.max(icon.height, words.implicitHeight)

    Symbol {
        id: icon

        key: root.symbol
        size: 22
        color: Brand.gold
    }
    BrandText {
        id: words

        anchors { left: icon.right; leftMargin: Theme.spacing; right: parent.right }
        text: root.text
        lineHeight: 1.15
        wrapMode: Text.Wrap
        color: Brand.lavender
    }
}
