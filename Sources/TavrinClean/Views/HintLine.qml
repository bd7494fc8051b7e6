import QtQuick
import Tavrin.Theme

/**
 * How a list is meant, above it.
 *
 * HintLine { symbol: "info.circle.fill"; text: S.moduleSimilarHint }
 */
ReadableColumn {
    id: root

    required property string symbol
    required property string text

    implicitHeight: words.implicitHeight + Theme.spacingSmall

    Symbol {
        id: icon

        y: 1
        key: root.symbol
        size: 15
        color: Brand.gold
    }
    BrandText {
        id: words

        anchors { left: icon.right; leftMargin: Theme.spacingSmall; right: parent.right }
        text: root.text
        font: Theme.caption
        color: Brand.lavender
        wrapMode: Text.Wrap
    }
}
