import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme

// The ids are wanted at once: nothing puts another item in the place of these.
// qmllint disable deferred-property-id

/**
 * One of a few, from a menu. It is as wide as its widest entry needs, whichever is chosen.
 *
 * MenuPicker { label: S.moduleSortBy; model: orders; currentIndex: now; onActivated: index => choose(index) }
 */
T.ComboBox {
    id: root

    /// What is picked here, for screen readers; shown before the value unless `labelHidden`.
    required property string label
    property bool labelHidden: false

    implicitHeight: Theme.controlHeight
    implicitWidth: Math.ceil(value.implicitWidth) + leftPadding + rightPadding
    leftPadding: 14
    rightPadding: 34
    font: Theme.body
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5

    readonly property real widest: widestOf(model, count)

    // The model is named so that another one of as many entries is measured as well.
    function widestOf(entries, many) {
        let result = 0
        for (let index = 0; index < many; ++index) result = Math.max(result, metrics.advanceWidth(textAt(index)))
        return Math.ceil(result)
    }

    Accessible.role: Accessible.ComboBox
    Accessible.name: label
    Accessible.description: displayText
    Accessible.onPressAction: popup.open()

    FontMetrics {
        id: metrics

        font: root.font
    }

    background: Rectangle {
        radius: height / 2
        color: Brand.white(root.down ? 0.14 : root.hovered ? 0.1 : 0.06)
        border.width: 1
        border.color: Brand.white(0.18)
        FocusRing { shown: root.visualFocus; around: root.height / 2 }
    }
    contentItem: Row {
        id: value

        spacing: 6

        Text {
            height: root.availableHeight
            visible: !root.labelHidden
            verticalAlignment: Text.AlignVCenter
            text: root.label
            textFormat: Text.PlainText
            font: root.font
            color: Brand.muted
        }
        Text {
            width: root.widest
            height: root.availableHeight
            verticalAlignment: Text.AlignVCenter
            text: root.displayText
            textFormat: Text.PlainText
            font: root.font
            color: Brand.ink
        }
    }
    indicator: Symbol {
        x: root.width - width - 12
        anchors.verticalCenter: parent.verticalCenter
        key: "chevron.up.chevron.down"
        size: 14
        color: Brand.muted
    }
    // The entries belong to this picker and to nothing else.
    // qmllint disable unqualified
    delegate: T.ItemDelegate {
        id: entry

        required property int index
        readonly property string title: root.textAt(index)

        width: ListView.view ? ListView.view.width : 0
        implicitHeight: 32
        highlighted: root.highlightedIndex === index
        hoverEnabled: true

        Accessible.role: Accessible.MenuItem
        Accessible.name: title
        Accessible.onPressAction: if (enabled) clicked()

        background: Rectangle {
            radius: Theme.radiusSmall
            color: Brand.white(entry.highlighted ? 0.12 : 0)
        }
        contentItem: Item {
            Symbol {
                x: 8
                anchors.verticalCenter: parent.verticalCenter
                visible: root.currentIndex === entry.index
                key: "checkmark"
                size: 12
                color: Brand.gold
            }
            Text {
                x: 28
                width: parent.width - x - 8
                anchors.verticalCenter: parent.verticalCenter
                text: entry.title
                textFormat: Text.PlainText
                elide: Text.ElideRight
                font: root.font
                color: Brand.ink
            }
        }
    }
    // qmllint enable unqualified
    popup: T.Popup {
        y: root.height + 6
        // What stands beside an entry's text, and the edges.
        width: Math.max(root.width, root.widest + 28 + 8 + 2 * padding)
        margins: 8
        implicitHeight: Math.min(contentItem.implicitHeight + 12, 320)
        padding: 6

        contentItem: ListView {
            implicitHeight: contentHeight
            clip: true
            highlightMoveDuration: 0
            highlightResizeDuration: 0
            model: root.delegateModel
            currentIndex: root.highlightedIndex
            Accessible.role: Accessible.PopupMenu
            Accessible.name: root.label
        }
        background: Rectangle {
            radius: Theme.radiusBanner
            color: Brand.sheet
            border.width: 1
            border.color: Brand.white(0.14)
            Glow { radius: Theme.radiusBanner; color: Brand.black(1); strength: 0.5 }
        }
    }
}
