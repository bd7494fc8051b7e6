import QtQuick
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words

/**
 * Stands where a screen will stand, and says so.
 *
 * NotBuiltView { screen: "diskMap" }
 */
FocusScope {
    id: root

    /// The screen's key.
    required property string screen

    function enter() {}

    Accessible.role: Accessible.Pane
    Accessible.name: Screens.titleOf(screen)

    Placeholder {
        anchors.centerIn: parent
        symbol: Screens.symbolOf(root.screen)
        tint: Brand.muted
        title: Screens.titleOf(root.screen)
        subtitle: S.windowNotBuiltYet
    }
}
