import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme

// The ids are wanted at once: nothing puts another item in the place of these.
// qmllint disable deferred-property-id

/**
 * One command of a BrandMenu.
 *
 * BrandMenuItem { text: S.actionShowInFinder; symbol: "folder"; onChosen: screen.showInFinder(url) }
 */
T.MenuItem {
    id: root

    /// The key of a symbol before the text; none while it is empty.
    property string symbol

    /// The menu has closed by then, and who had the keyboard has it again: what the command opens gives it back to that.
    signal chosen()

    implicitWidth: 228
    implicitHeight: 34
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5

    onTriggered: {
        menu?.close()
        chosen()
    }

    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()

    background: Rectangle {
        radius: Theme.radiusSmall
        color: Brand.white(root.highlighted && root.enabled ? 0.12 : 0)
    }
    contentItem: Item {
        Symbol {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol.length > 0
            key: root.symbol
            size: 16
            color: Brand.lavender
        }
        Text {
            x: root.symbol.length > 0 ? 36 : 12
            width: parent.width - x - 8
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font: Theme.body
            color: Brand.ink
        }
    }
}
