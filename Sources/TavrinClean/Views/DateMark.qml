import QtQuick
import Tavrin.Theme

/**
 * The day on which a file arrived.
 *
 * DateMark { date: row.dateText }
 */
Row {
    id: root

    required property string date

    spacing: 10

    Accessible.role: Accessible.StaticText
    Accessible.name: date

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        key: "calendar"
        size: 14
        color: Brand.muted
    }
    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: root.date
        textFormat: Text.PlainText
        font: Theme.caption
        color: Brand.muted
    }
}
