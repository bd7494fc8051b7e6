import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme
import Tavrin.Words

/**
 * What must be read and agreed to before anything else.
 *
 * ConsentView { onAccepted: App.consent.accept() }
 */
FocusScope {
    id: root

    property bool agreed: false

    signal accepted()

    /// What all but the terms needs; they get the rest.
    readonly property real otherHeight: top.implicitHeight + bottom.implicitHeight + 4 * Theme.spacingLarge
    readonly property real termsHeight: Math.max(96, Math.min(260, height - otherHeight))

    Accessible.role: Accessible.Pane
    Accessible.name: S.consentTitle

    Flickable {
        id: pane

        anchors.fill: parent
        contentHeight: Math.max(height, root.otherHeight + root.termsHeight)
        boundsBehavior: Flickable.StopAtBounds
        clip: contentHeight > height
        T.ScrollBar.vertical: BrandScrollBar {}

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            y: Math.max(Theme.spacingLarge, (pane.contentHeight - root.otherHeight - root.termsHeight) / 2 + Theme.spacingLarge)
            width: Math.min(620, pane.width - 2 * Theme.margin)

            Column {
                id: top

                width: parent.width
                spacing: Theme.spacing

                GemLogo {
                    anchors.horizontalCenter: parent.horizontalCenter
                    width: 72
                    height: 72
                }
                BrandText {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: S.appName
                    font: Theme.bodySemibold
                    color: Brand.gold
                }
                BrandText {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: S.consentTitle
                    font: Theme.title
                    Accessible.role: Accessible.Heading
                }
                ConsentBullet { symbol: "checkmark.shield.fill"; text: S.consentBulletYouDecide }
                ConsentBullet { symbol: "arrow.uturn.backward.circle.fill"; text: S.consentBulletReversible }
                ConsentBullet { symbol: "externaldrive.badge.timemachine"; text: S.consentBulletBackup }
            }
            BrandCard {
                id: terms

                anchors { top: top.bottom; topMargin: Theme.spacingLarge }
                width: parent.width
                height: root.termsHeight
                cornerRadius: Theme.radiusBanner

                ConsentTerms { anchors.fill: parent }
            }
            Column {
                id: bottom

                anchors { top: terms.bottom; topMargin: Theme.spacing }
                width: parent.width
                spacing: Theme.spacingSmall

                CheckMark {
                    id: agreeBox

                    width: Math.min(implicitWidth, parent.width)
                    focus: true
                    text: S.consentAgreeToggle
                    checkState: root.agreed ? Qt.Checked : Qt.Unchecked
                    onTicked: root.agreed = !root.agreed
                }
                Item {
                    width: parent.width
                    height: Theme.largeControlHeight + Theme.spacingSmall

                    LinkText {
                        anchors.verticalCenter: acceptButton.verticalCenter
                        text: S.consentReadPrivacy
                        onClicked: Qt.openUrlExternally(S.privacyPolicyURL)
                    }
                    GoldButton {
                        id: acceptButton

                        anchors { right: parent.right; top: parent.top }
                        large: true
                        text: S.consentAcceptButton
                        enabled: root.agreed
                        onClicked: root.accepted()
                    }
                }
            }
        }
    }
}
