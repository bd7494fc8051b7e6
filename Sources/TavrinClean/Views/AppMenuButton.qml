import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme
import Tavrin.Words

/**
 * The program's own menu. The program isn't updated from within on this system, so that command is there and disabled.
 *
 * AppMenuButton {}
 */
IconButton {
    id: root

    /// True when a search for a newer version may start now.
    property bool canCheckForUpdates: false

    signal checkForUpdates()

    symbol: "line.3.horizontal"
    name: S.windowMenu
    tip: menu.visible ? "" : name
    size: 18
    onClicked: menu.visible ? menu.close() : menu.open()

    BrandMenu {
        id: menu

        name: S.windowMenu
        y: root.height + 4
        // A press of the button itself is the button's: it would close the menu and open it again.
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

        BrandMenuItem {
            text: S.updatesCheck
            symbol: "arrow.down.circle"
            enabled: root.canCheckForUpdates
            onChosen: root.checkForUpdates()
        }
        BrandMenuItem {
            text: S.menuBarQuit
            symbol: "power"
            onChosen: Qt.quit()
        }
    }
}
