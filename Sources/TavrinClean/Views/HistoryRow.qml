import QtQuick
import Tavrin.Theme
import Tavrin.Words

/**
 * One clean of the past. Enter puts it back, as its button does.
 *
 * HistoryRow { title: row.title; dateText: row.date; summary: row.summary; canPutBack: true; restoring: false }
 */
FocusScope {
    id: root

    required property string title
    required property string dateText
    required property string summary
    required property bool canPutBack
    required property bool restoring
    /// The keyboard is on this row.
    property bool current: false

    signal putBack()
    signal pressed()

    implicitHeight: 84

    Accessible.role: Accessible.ListItem
    Accessible.name: title
    Accessible.description: dateText + " · " + summary

    // A key that is held means this record, not all those that come in its place.
    Keys.onReturnPressed: event => { if (canPutBack && !restoring && !event.isAutoRepeat) putBack() }
    Keys.onEnterPressed: event => { if (canPutBack && !restoring && !event.isAutoRepeat) putBack() }

    TapHandler { onPressedChanged: if (pressed) root.pressed() }

    ReadableColumn {
        anchors { fill: parent; bottomMargin: Theme.spacingSmall }

        Rectangle {
            anchors.fill: parent
            radius: Theme.radiusBanner
            color: Brand.white(0.05)
            border.width: 1
            border.color: Brand.white(0.08)
            FocusRing { shown: root.current && root.activeFocus && !button.activeFocus; around: Theme.radiusBanner; gap: 1 }
        }
        Column {
            anchors { left: parent.left; leftMargin: Theme.spacingLarge; right: trailing.left; rightMargin: Theme.spacing; verticalCenter: parent.verticalCenter }
            spacing: 2

            Text {
                width: parent.width
                text: root.title
                textFormat: Text.PlainText
                elide: Text.ElideRight
                font: Theme.headline
                color: Brand.ink
            }
            Text {
                width: parent.width
                text: root.dateText
                textFormat: Text.PlainText
                elide: Text.ElideRight
                font: Theme.caption
                color: Brand.muted
            }
            Text {
                width: parent.width
                text: root.summary
                textFormat: Text.PlainText
                elide: Text.ElideRight
                font: Theme.caption
                color: Brand.gold
            }
        }
        Item {
            id: trailing

            anchors { right: parent.right; rightMargin: Theme.spacingLarge; verticalCenter: parent.verticalCenter }
            width: button.implicitWidth
            height: button.implicitHeight

            Spinner {
                anchors.centerIn: parent
                visible: root.restoring
                name: S.windowPuttingBack
            }
            GhostButton {
                id: button

                visible: !root.restoring
                enabled: root.canPutBack
                symbol: "arrow.uturn.backward"
                text: S.historyPutBack
                Accessible.description: S.historyPutBackHelp
                onClicked: root.putBack()

                HelpTip { wanted: button.hovered || button.visualFocus; text: S.historyPutBackHelp }
            }
        }
    }
}
