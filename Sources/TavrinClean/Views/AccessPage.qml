import QtQuick
import Tavrin.Theme
import Tavrin.Words

/**
 * The system refused, and how the person can allow it.
 *
 * AccessPage { body: S.fdaMailBody; onOpenSettings: open(); onScanAgain: model.startScan() }
 */
FocusScope {
    id: root

    required property string body

    signal openSettings()
    signal scanAgain()

    Column {
        anchors.centerIn: parent
        width: Math.min(520, parent.width - 2 * Theme.margin)
        spacing: Theme.spacing

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            key: "lock.shield"
            size: 52
            color: Brand.gold
        }
        BrandText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: S.fdaTitle
            font: Theme.title3
        }
        BrandText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            lineHeight: 1.15
            text: root.body
            color: Brand.lavender
        }
        BrandText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            bottomPadding: Theme.spacingSmall
            text: S.fdaSteps
            font: Theme.caption
            color: Brand.muted
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.spacing

            GoldButton {
                focus: true
                symbol: "gearshape"
                text: S.fdaOpenSettings
                onClicked: root.openSettings()
            }
            GhostButton {
                text: S.actionScanAgain
                onClicked: root.scanAgain()
            }
        }
    }
}
