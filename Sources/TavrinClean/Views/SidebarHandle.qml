import QtQuick

/**
 * The edge between the sidebar and the screen, to be dragged.
 *
 * SidebarHandle { id: handle; x: sidebar.width - width / 2; windowWidth: page.width }
 */
Item {
    id: root

    required property real windowWidth

    readonly property int narrowest: 248
    /// The screen beside it keeps what it has in the smallest window, so that nothing on it is ever squeezed.
    readonly property real widest: Math.max(narrowest, Math.min(380, windowWidth - 676))
    readonly property real sidebarWidth: Math.min(wished, widest)
    /// Where it was dragged to; a window that shrinks and grows again comes back to it.
    property real wished: 264

    width: 8

    HoverHandler { cursorShape: Qt.SplitHCursor }
    DragHandler {
        id: drag

        property real from

        target: null
        yAxis.enabled: false
        onActiveChanged: if (active) from = root.sidebarWidth
        onTranslationChanged: if (active) root.wished = Math.max(root.narrowest, Math.min(root.widest, from + translation.x))
    }
}
