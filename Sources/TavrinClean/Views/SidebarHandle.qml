import QtQuick

/**
 * The edge between the sidebar and the screen, to be dragged.
 *
 * SidebarHandle { id: handle; x: sidebar.width - width / 2 }
 */
Item {
    id: root

    readonly property int narrowest: 248
    readonly property int widest: 380
    property real sidebarWidth: 264

    width: 8

    HoverHandler { cursorShape: Qt.SplitHCursor }
    DragHandler {
        id: drag

        property real from

        target: null
        yAxis.enabled: false
        onActiveChanged: if (active) from = root.sidebarWidth
        onTranslationChanged: if (active) root.sidebarWidth = Math.max(root.narrowest, Math.min(root.widest, from + translation.x))
    }
}
