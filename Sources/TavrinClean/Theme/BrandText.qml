import QtQuick
import Tavrin.Theme

/**
 * Text for people. Always plain: a file's name may hold what looks like markup.
 *
 * BrandText { text: S.historyTitle; font: Theme.title2 }
 */
Text {
    textFormat: Text.PlainText
    font: Theme.body
    color: Brand.ink

    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
