import QtQuick
import Tavrin.Theme

/**
 * The head of a screen: what it is, and at its end what can be done with all of it.
 *
 * ScreenHeader { symbol: "clock.arrow.circlepath"; title: S.historyTitle; subtitle: total; GhostButton { ... } }
 */
Item {
    id: root

    required property string symbol
    required property string title
    property string subtitle
    /// A further line below, in a smaller font; none while it is empty.
    property string note
    default property alias actions: row.data

    implicitHeight: Math.max(chip.height, words.implicitHeight) + 2 * Theme.spacingLarge

    ReadableColumn {
        anchors.fill: parent

        IconChip {
            id: chip

            anchors.verticalCenter: parent.verticalCenter
            symbol: root.symbol
            size: 44
        }
        Column {
            id: words

            anchors { left: chip.right; leftMargin: Theme.spacing; right: row.left; rightMargin: Theme.spacing; verticalCenter: parent.verticalCenter }
            spacing: 2

            BrandText {
                width: parent.width
                text: root.title
                font: Theme.title2
                elide: Text.ElideRight
                Accessible.role: Accessible.Heading
            }
            BrandText {
                width: parent.width
                visible: text.length > 0
                text: root.subtitle
                font: Theme.caption
                color: Brand.lavender
                elide: Text.ElideRight
            }
            BrandText {
                width: parent.width
                visible: text.length > 0
                text: root.note
                font: Theme.caption2
                color: Brand.muted
                wrapMode: Text.Wrap
            }
        }
        Row {
            id: row

            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            spacing: Theme.spacing
        }
    }
}
