pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Words

/**
 * Sets of similar pictures. Arrows move among all of them, Space ticks, Enter looks.
 *
 * GalleryList { screen: model }
 */
FocusScope {
    id: root

    required property ModuleScreenModel screen

    /// The picture of the current set that the keyboard is on.
    property int currentCell: 0

    // That picture, wherever another order puts it, and though a search hides it for a while.
    property string currentId

    function currentCard() {
        return list.currentItem as GalleryCard
    }

    function moveTo(group, cell) {
        if (group < 0 || group >= list.count) return
        place(group, cell)
        currentId = screen.groups.itemIdAt(group, currentCell)
    }

    function place(group, cell) {
        list.currentIndex = group
        list.positionViewAtIndex(group, ListView.Contain)
        const card = currentCard()
        currentCell = cell < 0 ? card.itemCount - 1 : Math.min(cell, card.itemCount - 1)
        const cellTop = card.y + card.cellTop(currentCell)
        if (cellTop < list.contentY) list.contentY = cellTop
        else if (cellTop + card.cellHeight > list.contentY + list.height) list.contentY = cellTop + card.cellHeight - list.height
    }

    function keepPlace() {
        if (list.count === 0) return
        const place = screen.groups.placeOf(currentId)
        root.place(Math.max(0, place.x), Math.max(0, place.y))
    }

    function step(by) {
        const card = currentCard()
        if (!card) return
        const cell = currentCell + by
        if (cell < 0) moveTo(list.currentIndex - 1, by === -1 ? -1 : currentCell)
        else if (cell >= card.itemCount) moveTo(list.currentIndex + 1, by === 1 ? 0 : currentCell % card.columns)
        else moveTo(list.currentIndex, cell)
    }

    // As many lines as are in view, but no further than into the next set.
    function turnPage(by) {
        const card = currentCard()
        if (!card) return
        const lines = Math.max(1, Math.floor(list.height / (card.cellHeight + card.gap)))
        const cell = currentCell + by * lines * card.columns
        if (cell >= 0 && cell < card.itemCount) moveTo(list.currentIndex, cell)
        else if (by > 0 && list.currentIndex < list.count - 1) moveTo(list.currentIndex + 1, currentCell % card.columns)
        else if (by < 0 && list.currentIndex > 0) moveTo(list.currentIndex - 1, -1)
        else moveTo(list.currentIndex, by > 0 ? -1 : 0)
    }

    function showMenu() {
        withCell(cell => cell.menuWanted(Qt.point(20, 20)))
    }

    function withCell(act) {
        const cell = currentCard()?.cellAt(currentCell)
        if (cell) act(cell)
    }

    Component.onCompleted: moveTo(0, 0)

    Connections {
        target: root.screen
        function onShownChanged() { root.keepPlace() }
    }
    HintLine {
        id: hint

        width: parent.width
        symbol: "info.circle.fill"
        text: S.moduleSimilarHint
    }
    ListView {
        id: list

        anchors { left: parent.left; right: parent.right; top: hint.bottom; topMargin: Theme.spacingSmall; bottom: parent.bottom }
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: false
        clip: true
        cacheBuffer: 600
        spacing: Theme.spacingLarge
        bottomMargin: Theme.spacingLarge
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        model: root.screen.groups
        T.ScrollBar.vertical: BrandScrollBar {}

        Accessible.role: Accessible.List
        Accessible.name: S.windowResults

        Keys.onLeftPressed: root.step(-1)
        Keys.onRightPressed: root.step(1)
        Keys.onUpPressed: root.step(-(root.currentCard()?.columns ?? 1))
        Keys.onDownPressed: root.step(root.currentCard()?.columns ?? 1)
        // A key that is held would leave a tick to chance.
        Keys.onSpacePressed: event => { if (!event.isAutoRepeat) root.withCell(cell => cell.toggled()) }
        Keys.onReturnPressed: root.withCell(cell => cell.preview())
        Keys.onEnterPressed: root.withCell(cell => cell.preview())
        Keys.onMenuPressed: root.showMenu()
        Keys.onEscapePressed: event => {
            event.accepted = root.screen.searchText.length > 0
            root.screen.searchText = ""
        }
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Home) root.moveTo(0, 0)
            else if (event.key === Qt.Key_End) root.moveTo(count - 1, -1)
            else if (event.key === Qt.Key_PageDown) root.turnPage(1)
            else if (event.key === Qt.Key_PageUp) root.turnPage(-1)
            else if (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier) root.showMenu()
            else return
            event.accepted = true
        }

        delegate: GalleryCard {
            id: card

            required property int index

            width: ListView.view.width
            focus: ListView.isCurrentItem
            currentCell: ListView.isCurrentItem ? root.currentCell : -1
            onToggled: itemId => root.screen.toggle(itemId)
            onMenuWanted: (url, cell, place) => {
                menu.url = url
                menu.popup(cell, place)
            }
            onPressed: cell => {
                // Not by moveTo, which scrolls: what is pressed must stay under the mouse.
                list.currentIndex = index
                root.currentCell = cell
                root.currentId = root.screen.groups.itemIdAt(index, cell)
                list.forceActiveFocus(Qt.MouseFocusReason)
            }
        }
    }
    FileMenu {
        id: menu

        onShowWanted: url => root.screen.showInFinder(url)
    }
}
