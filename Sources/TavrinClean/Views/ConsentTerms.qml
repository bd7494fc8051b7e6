import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme
import Tavrin.Words

/**
 * The terms of use, to be scrolled through; the arrow keys do it too.
 *
 * ConsentTerms { anchors.fill: parent }
 */
Flickable {
    id: root

    contentHeight: words.implicitHeight + 2 * Theme.spacing
    clip: true
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: BrandScrollBar {}

    Accessible.role: Accessible.Pane
    Accessible.name: S.consentTermsHeading

    Keys.onUpPressed: flick(0, 600)
    Keys.onDownPressed: flick(0, -600)

    Column {
        id: words

        x: Theme.spacingLarge
        y: Theme.spacing
        width: root.width - 2 * Theme.spacingLarge
        spacing: Theme.spacingSmall

        BrandText {
            width: parent.width
            text: S.consentTermsHeading
            font: Theme.headline
            Accessible.role: Accessible.Heading
        }
        BrandText {
            width: parent.width
            text: S.consentTermsBody
            font: Theme.caption
            lineHeight: 1.2
            wrapMode: Text.Wrap
            color: Brand.muted
        }
    }
    FocusRing {
        parent: root
        shown: root.activeFocus
        gap: -2
        around: Theme.radiusBanner
    }
}
