import QtQuick
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words

/**
 * What stands in the main window: the screens, and above them the preview of a file.
 */
FocusScope {
    ContentView {
        anchors.fill: parent
        focus: true
    }
    QuickLookSheet {
        title: S.actionQuickLook
        closeName: S.windowClose
        created: S.windowCreated
        modified: S.windowModified
    }

    Shortcut {
        // The checker of this release doesn't know the name.
        // qmllint disable unqualified
        sequences: [StandardKey.Quit, StandardKey.Close]
        // qmllint enable unqualified
        context: Qt.ApplicationShortcut
        onActivated: Qt.quit()
    }
}
