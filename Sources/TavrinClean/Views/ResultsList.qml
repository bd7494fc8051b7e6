pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Words

/**
 * The findings in their groups. Arrows move, Space ticks, Enter opens, Left and Right fold.
 *
 * ResultsList { screen: model }
 */
FocusScope {
    id: root

    required property ModuleScreenModel screen

    // What the keyboard is on, wherever another order puts it, and though a search hides it for a while.
    property string currentId
    property bool placing: false

    function currentRow() {
        return list.currentItem as ResultsRow
    }

    function tick(row) {
        if (row.kind === ResultsModel.Group) screen.toggleGroup(row.groupId)
        else if (row.kind === ResultsModel.Item) screen.toggle(row.itemId)
    }

    function open(row) {
        if (row.kind === ResultsModel.Group) screen.toggleCollapsed(row.groupId)
        else if (row.expandable) screen.toggleExpanded(row.itemId)
        else if (row.url.length > 0) QuickLook.show(row.url)
    }

    function fold(row, away) {
        if (row.kind === ResultsModel.Group && row.collapsed !== away) screen.toggleCollapsed(row.groupId)
        else if (row.expandable && row.expanded === away) screen.toggleExpanded(row.itemId)
    }

    function showMenu(row, place) {
        if (!row || row.url.length === 0) return
        menu.url = row.url
        menu.popup(row, place)
    }

    function keepPlace() {
        placing = true
        list.currentIndex = Math.max(0, screen.rows.rowOf(currentId))
        placing = false
    }

    Connections {
        target: root.screen
        function onShownChanged() { root.keepPlace() }
    }

    ListView {
        id: list

        anchors.fill: parent
        focus: true
        activeFocusOnTab: true
        clip: true
        reuseItems: true
        cacheBuffer: 400
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        bottomMargin: Theme.spacing
        model: root.screen.rows
        T.ScrollBar.vertical: BrandScrollBar {}

        Accessible.role: Accessible.List
        Accessible.name: S.windowResults

        onCurrentIndexChanged: if (root.currentRow() && !root.placing) root.currentId = root.currentRow().rowId

        // A key that is held would leave a tick to chance.
        Keys.onSpacePressed: event => { if (root.currentRow() && !event.isAutoRepeat) root.tick(root.currentRow()) }
        Keys.onReturnPressed: if (root.currentRow()) root.open(root.currentRow())
        Keys.onEnterPressed: if (root.currentRow()) root.open(root.currentRow())
        Keys.onLeftPressed: if (root.currentRow()) root.fold(root.currentRow(), true)
        Keys.onRightPressed: if (root.currentRow()) root.fold(root.currentRow(), false)
        Keys.onMenuPressed: root.showMenu(root.currentRow(), Qt.point(60, 40))
        Keys.onEscapePressed: event => {
            event.accepted = root.screen.searchText.length > 0
            root.screen.searchText = ""
        }
        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(height / 52) - 1)
            if (event.key === Qt.Key_Home) currentIndex = 0
            else if (event.key === Qt.Key_End) currentIndex = count - 1
            else if (event.key === Qt.Key_PageDown) currentIndex = Math.min(count - 1, currentIndex + page)
            else if (event.key === Qt.Key_PageUp) currentIndex = Math.max(0, currentIndex - page)
            else if (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier) root.showMenu(root.currentRow(), Qt.point(60, 40))
            else return
            event.accepted = true
        }

        delegate: ResultsRow {
            id: row

            width: ListView.view.width
            current: ListView.isCurrentItem && list.activeFocus
            focus: ListView.isCurrentItem
            onTicked: root.tick(row)
            onOpened: root.open(row)
            onExpandToggled: root.screen.toggleExpanded(itemId)
            onPreview: QuickLook.show(url)
            onMenuWanted: place => root.showMenu(row, place)
            onPressed: {
                list.currentIndex = index
                root.currentId = rowId
                list.forceActiveFocus(Qt.MouseFocusReason)
            }
        }
    }
    FileMenu {
        id: menu

        onShowWanted: url => root.screen.showInFinder(url)
    }
}
