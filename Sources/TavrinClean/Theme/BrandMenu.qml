import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Tavrin.Theme

// The ids are wanted at once: nothing puts another item in the place of these.
// qmllint disable deferred-property-id

/**
 * A menu of commands. Its entries are BrandMenuItem. What had the keyboard gets it back when the menu closes.
 *
 * BrandMenu { name: S.windowMenu; BrandMenuItem { text: S.menuBarQuit; onChosen: Qt.quit() } }
 */
T.Menu {
    id: root

    /// What it is, for screen readers.
    required property string name

    /// What had the keyboard, and whether it showed it.
    property Item before: null
    property bool showedFocus: false

    implicitWidth: 240
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    padding: 6
    margins: 8
    overlap: 0
    focus: true

    onAboutToShow: {
        before = parent.Window.activeFocusItem
        showedFocus = (before as T.Control)?.visualFocus ?? false
    }
    onClosed: before?.forceActiveFocus(showedFocus ? Qt.TabFocusReason : Qt.OtherFocusReason)

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
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        currentIndex: root.currentIndex

        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.name
    }
}
