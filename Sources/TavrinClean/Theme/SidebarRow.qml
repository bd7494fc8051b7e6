import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme

// The ids are wanted at once: nothing puts another item in the place of these.
// qmllint disable deferred-property-id

// The components in it are its own, and see its ids; a loader of this release can't make them where that is declared.
// qmllint disable unqualified

/**
 * A row of the sidebar: symbol, title, a line below it, a figure at the end of that line. What is cut short is told whole
 * to who rests on it.
 *
 * SidebarRow { symbol: kind.symbol; title: kind.title; subtitle: kind.subtitle; figure: size; selected: is; onClicked: go() }
 */
// Screen readers take a control for what its type is: this one is an entry of a list.
T.ItemDelegate {
    id: root

    required property string symbol
    required property string title
    property string subtitle
    /// Shown in a capsule on the line below the title; none while it is empty.
    property string figure
    property bool selected: false
    property bool emphasised: false
    property color symbolTint: Brand.gold

    implicitWidth: 248
    implicitHeight: subtitle.length > 0 ? 46 : 36
    leftPadding: 10
    rightPadding: 8
    focusPolicy: Qt.TabFocus
    hoverEnabled: true

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Accessible.role: Accessible.ListItem
    Accessible.name: title
    Accessible.description: figure.length > 0 ? subtitle + " · " + figure : subtitle
    Accessible.selected: selected
    Accessible.selectable: true
    Accessible.onPressAction: if (enabled) clicked()

    background: Rectangle {
        radius: Theme.radiusRow
        color: root.selected ? Brand.faded(Brand.gold, 0.16) : Brand.white(root.down ? 0.1 : root.hovered ? 0.06 : 0)
        FocusRing { shown: root.visualFocus; gap: 0 }
    }
    contentItem: Item {
        Symbol {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            key: root.symbol
            size: 18
            color: root.symbolTint
        }
        Column {
            id: words

            anchors { left: icon.right; leftMargin: 10; right: parent.right; verticalCenter: parent.verticalCenter }
            spacing: 1

            Text {
                id: heading

                width: parent.width
                text: root.title
                textFormat: Text.PlainText
                elide: Text.ElideRight
                font: root.emphasised ? Theme.bodySemibold : Theme.body
                color: Brand.ink
            }
            Text {
                id: line

                width: parent.width - (capsule.visible ? capsule.width + 6 : 0)
                visible: root.subtitle.length > 0
                text: root.subtitle
                textFormat: Text.PlainText
                elide: Text.ElideRight
                font: Theme.caption
                color: Brand.lavender
            }
        }
        // On the line below the title, which keeps the whole width: a module is known by its name.
        Capsule {
            id: capsule

            anchors.right: parent.right
            y: words.y + line.y + (line.height - height) / 2
            implicitHeight: 18
            visible: root.figure.length > 0
            text: root.figure
            Accessible.ignored: true
        }
    }
    Loader {
        anchors.fill: parent
        active: (root.hovered || root.visualFocus) && (heading.truncated || line.truncated)
        sourceComponent: Component {
            HelpTip {
                wanted: true
                text: [heading, line].filter(text => text.truncated).map(text => text.text).join("\n")
            }
        }
    }
}
