import QtQuick
import QtQuick.Window
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words

Window {
    id: root

    function bringToFront() {
        if (visibility === Window.Minimized) showNormal()
        show()
        raise()
        requestActivate()
    }

    width: 1120
    height: 740
    minimumWidth: 940
    minimumHeight: 620
    visible: true
    title: S.appName
    color: Brand.deepest

    ContentView { anchors.fill: parent }
    QuickLookSheet { title: S.actionQuickLook; created: S.windowCreated; modified: S.windowModified }

    Shortcut {
        sequences: [StandardKey.Quit, StandardKey.Close]
        context: Qt.ApplicationShortcut
        onActivated: Qt.quit()
    }
}
