import QtQuick
import Tavrin.Theme

/**
 * A way out of the program, to a page on the web.
 *
 * LinkText { text: S.consentReadPrivacy; onClicked: Qt.openUrlExternally(S.privacyPolicyURL) }
 */
Item {
    id: root

    required property string text

    signal clicked()

    implicitWidth: Math.ceil(words.implicitWidth)
    implicitHeight: 28
    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.5

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onSpacePressed: clicked()

    Accessible.role: Accessible.Link
    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()

    HoverHandler { id: hover; cursorShape: Qt.PointingHandCursor }
    TapHandler { id: tap; onTapped: root.clicked() }
    FocusRing { shown: root.activeFocus; gap: 2; around: Theme.radiusSmall }

    Text {
        id: words

        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        textFormat: Text.PlainText
        opacity: tap.pressed ? 0.82 : 1
        font: Qt.font({ family: Theme.family, pixelSize: Theme.body.pixelSize, underline: hover.hovered })
        color: hover.hovered ? Brand.goldHi : Brand.gold
    }
}
