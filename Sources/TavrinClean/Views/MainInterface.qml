import QtQuick
import Tavrin.Kit
import Tavrin.Views

/**
 * The sidebar and the selected screen.
 *
 * MainInterface { selection: page.selection; onChosen: key => page.selection = key }
 */
FocusScope {
    id: root

    required property string selection

    signal chosen(string key)

    Component.onCompleted: App.mainInterfaceAppeared()

    Sidebar {
        id: sidebar

        width: handle.sidebarWidth
        height: parent.height
        focus: true
        cleanup: App.cleanupModules
        space: App.spaceModules
        selection: root.selection
        onChosen: key => root.chosen(key)
        onEntered: detail.enter()
    }
    DetailArea {
        id: detail

        anchors { left: sidebar.right; right: parent.right; top: parent.top; bottom: parent.bottom }
        screen: root.selection.length > 0 ? root.selection : Screens.first
    }
    SidebarHandle {
        id: handle

        x: sidebar.width - width / 2
        windowWidth: root.width
        height: parent.height
    }
}
