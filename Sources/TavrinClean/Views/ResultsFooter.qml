import QtQuick
import Tavrin.Theme
import Tavrin.Words

/**
 * What is ticked, and what can be done with it.
 *
 * ResultsFooter { selectedCountText: "3 selected"; selectedSizeText: "1.2 GB"; canClean: true; onClean: ask() }
 */
Item {
    id: root

    required property string selectedCountText
    required property string selectedSizeText
    required property bool canClean

    signal selectAll()
    signal selectNone()
    signal clean()

    implicitHeight: 68

    Rectangle {
        anchors.fill: parent
        color: Brand.black(0.18)
    }
    Divider { width: parent.width }
    ReadableColumn {
        anchors.fill: parent

        Row {
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.spacingSmall

            GhostButton {
                text: S.actionSelectAll
                onClicked: root.selectAll()
            }
            GhostButton {
                text: S.actionSelectNone
                onClicked: root.selectNone()
            }
        }
        Row {
            anchors { right: button.left; rightMargin: Theme.spacingLarge; verticalCenter: parent.verticalCenter }
            spacing: Theme.spacingSmall

            BrandText {
                text: root.selectedCountText
                color: Brand.muted
            }
            BrandText {
                text: root.selectedSizeText
                font: Theme.bodySemibold
                color: Brand.gold
            }
        }
        GoldButton {
            id: button

            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            symbol: "trash"
            text: S.actionClean
            enabled: root.canClean
            onClicked: root.clean()
        }
    }
}
