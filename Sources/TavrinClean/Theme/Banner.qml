import QtQuick
import Tavrin.Theme

/**
 * A note across a screen: something to know, or something that went wrong.
 *
 * Banner { symbol: "info.circle.fill"; text: S.moduleNoteMail }
 * Banner { warning: true; symbol: "exclamationmark.triangle.fill"; text: S.moduleScanPartial(2) }
 */
Rectangle {
    id: root

    required property string symbol
    required property string text
    property bool warning: false

    implicitWidth: 480
    implicitHeight: Math.max(icon.height, label.implicitHeight) + 2 * 10
    radius: Theme.radiusBanner
    color: warning ? Brand.faded(Brand.danger, 0.12) : Brand.faded(Brand.gold, 0.08)

    Accessible.role: warning ? Accessible.AlertMessage : Accessible.Note
    Accessible.name: text

    Symbol {
        id: icon

        x: 14
        y: 10
        key: root.symbol
        size: 16
        color: root.warning ? Brand.softWarning : Brand.gold
    }
    Text {
        id: label

        anchors { left: icon.right; leftMargin: 10; right: parent.right; rightMargin: 14; top: parent.top; topMargin: 10 }
        text: root.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        font: Theme.caption
        lineHeight: 1.15
        color: root.warning ? Brand.softWarning : Brand.lavender
    }
}
