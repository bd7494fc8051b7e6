import QtQuick
import Tavrin.Theme

/**
 * Whether an attachment comes back by itself.
 *
 * MailBadge { text: row.mailBadge; redownloads: true }
 */
Row {
    id: root

    required property string text
    required property bool redownloads
    readonly property color tint: redownloads ? Brand.safe : Brand.gold

    spacing: 5

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        key: root.redownloads ? "arrow.down.circle" : "exclamationmark.triangle.fill"
        size: 13
        color: root.tint
    }
    Text {
        text: root.text
        textFormat: Text.PlainText
        font: Theme.caption
        color: root.tint
    }
}
