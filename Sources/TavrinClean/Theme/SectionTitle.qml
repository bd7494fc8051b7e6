import QtQuick
import Tavrin.Theme

/**
 * The head of a group in a list, in capitals.
 *
 * SectionTitle { text: S.sectionCleanup }
 */
Text {
    textFormat: Text.PlainText
    font: Qt.font({ family: Theme.overline.family, pixelSize: Theme.overline.pixelSize, weight: Theme.overline.weight,
                    letterSpacing: Theme.overline.letterSpacing, capitalization: Font.AllUppercase })
    color: Brand.muted

    Accessible.role: Accessible.Heading
    Accessible.name: text
}
