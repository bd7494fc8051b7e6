import QtQuick
import Tavrin.Theme
import Tavrin.Words

/**
 * What can be done with one file of a list, wherever it is shown.
 *
 * FileMenu { id: menu; onShowWanted: url => screen.showInFinder(url) }
 */
BrandMenu {
    id: root

    /// The file, in absolute form.
    property string url

    signal showWanted(string url)

    name: S.windowMenu

    BrandMenuItem {
        text: S.actionQuickLook
        symbol: "eye"
        onChosen: QuickLook.show(root.url)
    }
    BrandMenuItem {
        text: S.actionShowInFinder
        symbol: "folder"
        onChosen: root.showWanted(root.url)
    }
}
