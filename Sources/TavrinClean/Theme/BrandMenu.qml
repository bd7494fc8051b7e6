import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme

// The ids are wanted at once: nothing puts another item in the place of these.
// qmllint disable deferred-property-id

/**
 * A menu of commands. Its entries are BrandMenuItem.
 *
 * BrandMenu { name: S.windowMenu; BrandMenuItem { text: S.menuBarQuit; onTriggered: Qt.quit() } }
 */
T.Menu {
    id: root

    /// What it is, for screen readers.
    required property string name

    implicitWidth: 240
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    padding: 6
    margins: 8
    overlap: 0
    focus: true

    background: Rectangle {
        radius: Theme.radiusBanner
        color: Brand.sheet
        border.width: 1
        border.color: Brand.white(0.14)

        Glow { radius: Theme.radiusBanner; color: Brand.black(1); strength: 0.5 }
    }
    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        interactive: false
        currentIndex: root.currentIndex

        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.name
    }
}
