import QtQuick
import Tavrin.Theme
import Tavrin.Words

/**
 * How many there are, what is searched for, and in what order they stand.
 *
 * SortBar { countText: "12 items"; searchText: ""; sortLabels: [...]; sortIndex: 0; onSearched: text => find(text) }
 */
Item {
    id: root

    required property string countText
    required property string searchText
    /// Texts.
    required property var sortLabels
    required property int sortIndex

    signal searched(string text)
    signal sorted(int index)
    /// Down or Enter in the search: the list is meant.
    signal listWanted()

    function focusSearch() {
        search.forceActiveFocus(Qt.ShortcutFocusReason)
        search.selectAll()
    }

    implicitHeight: 58

    ReadableColumn {
        anchors.fill: parent

        BrandText {
            id: count

            anchors.verticalCenter: parent.verticalCenter
            text: root.countText
            color: Brand.muted
        }
        SearchField {
            id: search

            anchors { left: count.right; leftMargin: Theme.spacingLarge; verticalCenter: parent.verticalCenter }
            width: Math.min(260, picker.x - x - Theme.spacing)
            placeholder: S.searchPlaceholder
            clearName: S.windowClearSearch
            text: root.searchText
            onTextChanged: if (text !== root.searchText) root.searched(text)
            Keys.onDownPressed: root.listWanted()
            Keys.onReturnPressed: root.listWanted()
            Keys.onEnterPressed: root.listWanted()
        }
        MenuPicker {
            id: picker

            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            label: S.moduleSortBy
            model: root.sortLabels
            currentIndex: root.sortIndex
            onActivated: index => root.sorted(index)
        }
    }
}
