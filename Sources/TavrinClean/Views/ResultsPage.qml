import QtQuick
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Words

// The components in it are its own, and see its ids; a loader of this release can't make them where that is declared.
// qmllint disable unqualified

/**
 * What a scan found, as the module's kind of list.
 *
 * ResultsPage { screen: model }
 */
FocusScope {
    id: root

    required property ModuleScreenModel screen
    readonly property bool searchable: !screen.nothingFound

    function focusSearch() {
        bar.focusSearch()
    }

    Placeholder {
        anchors.centerIn: parent
        visible: root.screen.nothingFound
        symbol: "checkmark.seal"
        title: S.moduleNothingToClean
    }
    SortBar {
        id: bar

        width: parent.width
        visible: root.searchable
        countText: root.screen.itemCountText
        searchText: root.screen.searchText
        sortLabels: root.screen.sortLabels
        sortIndex: root.screen.sortIndex
        onSearched: text => root.screen.searchText = text
        onSorted: index => root.screen.sortIndex = index
        onListWanted: list.forceActiveFocus(Qt.TabFocusReason)
    }
    Loader {
        id: list

        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom }
        focus: true
        active: root.searchable
        sourceComponent: root.screen.layout === ModuleScreenModel.Gallery ? gallery
                       : root.screen.layout === ModuleScreenModel.Languages ? languages : rows
    }
    Component {
        id: rows

        ResultsList { focus: true; screen: root.screen }
    }
    Component {
        id: gallery

        GalleryList { focus: true; screen: root.screen }
    }
    Component {
        id: languages

        LanguageList { focus: true; screen: root.screen }
    }
    Placeholder {
        anchors.centerIn: list
        visible: root.searchable && root.screen.nothingMatches
        symbol: "magnifyingglass"
        symbolSize: 40
        tint: Brand.muted
        title: S.windowNothingMatches
    }
}
