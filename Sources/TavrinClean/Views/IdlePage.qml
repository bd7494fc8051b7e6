import QtQuick
import Tavrin.Theme
import Tavrin.Words

/**
 * A module that hasn't been scanned: what it is for, and the one button.
 *
 * IdlePage { symbol: module.symbol; title: module.title; subtitle: module.subtitle; onScan: model.startScan() }
 */
FocusScope {
    id: root

    required property string symbol
    required property string title
    required property string subtitle

    signal scan()

    Column {
        anchors.centerIn: parent
        spacing: Theme.spacing

        IconChip {
            anchors.horizontalCenter: parent.horizontalCenter
            symbol: root.symbol
            gold: true
            size: 76
        }
        BrandText {
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: Theme.spacingSmall
            text: root.title
            font: Theme.title
            Accessible.ignored: true
        }
        BrandText {
            anchors.horizontalCenter: parent.horizontalCenter
            bottomPadding: Theme.spacingSmall
            text: root.subtitle
            color: Brand.lavender
            Accessible.ignored: true
        }
        GoldButton {
            anchors.horizontalCenter: parent.horizontalCenter
            large: true
            focus: true
            symbol: "magnifyingglass"
            text: S.actionScan
            onClicked: root.scan()
        }
    }
}
