import QtQuick
import Tavrin.Theme
import Tavrin.Words

/**
 * The product's name in two colours, its second word small below the first.
 *
 * ProductName {}
 */
Column {
    id: root

    readonly property var words: S.appName.split(" ")
    readonly property int half: Math.ceil(words[0].length / 2)

    Accessible.role: Accessible.StaticText
    Accessible.name: S.appName

    Row {
        Text {
            text: root.words[0].slice(0, root.half)
            textFormat: Text.PlainText
            font: Theme.title3
            color: Brand.ink
        }
        Text {
            text: root.words[0].slice(root.half)
            textFormat: Text.PlainText
            font: Theme.title3
            color: Brand.gold
        }
    }
    Text {
        text: root.words[1]
        textFormat: Text.PlainText
        font: Theme.caption
        color: Brand.muted
    }
}
