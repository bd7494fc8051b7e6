import QtQuick
import Tavrin.Kit
import Tavrin.Views

// The components in it are its own, and see its ids; a loader of this release can't make them where that is declared.
// qmllint disable unqualified

/**
 * All that stands on the ground of the main window: the consent first, then the sidebar and beside it the screen that is
 * selected.
 *
 * ContentView { anchors.fill: parent }
 */
FocusScope {
    id: root

    /// The key of the selected screen. Empty, it shows the first one with nothing selected in the sidebar.
    property string selection: Screens.first

    focus: true

    Loader {
        anchors.fill: parent
        focus: active
        active: !App.consent.accepted
        sourceComponent: Component {
            ConsentView {
                focus: true
                onAccepted: App.consent.accept()
            }
        }
    }
    Loader {
        anchors.fill: parent
        focus: active
        active: App.consent.accepted
        sourceComponent: Component {
            MainInterface {
                focus: true
                selection: root.selection
                onChosen: key => root.selection = key
            }
        }
    }
}
