pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Words

/**
 * The languages that apps bring along. Arrows move; Space, Enter or a click turns one from kept to removed and back.
 *
 * LanguageList { screen: model }
 */
FocusScope {
    id: root

    required property ModuleScreenModel screen

    // What the keyboard is on, though a search hides it for a while.
    property string currentId
    property bool placing: false

    function keepPlace() {
        placing = true
        list.currentIndex = Math.max(0, screen.groups.rowOf(currentId))
        placing = false
    }

    Connections {
        target: root.screen
        function onShownChanged() { root.keepPlace() }
    }

    HintLine {
        id: hint

        width: parent.width
        symbol: "checkmark.circle.fill"
        text: S.moduleLanguagesHint
    }
    ReadableColumn {
        anchors { left: parent.left; right: parent.right; top: hint.bottom; topMargin: Theme.spacingSmall; bottom: parent.bottom; bottomMargin: Theme.spacing }

        BrandCard {
            width: parent.width
            height: Math.min(parent.height, list.contentHeight + 12)
            visible: list.count > 0

            Rectangle {
                anchors.fill: parent
                radius: Theme.radiusCard
                color: Brand.well
            }
            ListView {
                id: list

                anchors { fill: parent; margins: 6 }
                focus: true
                activeFocusOnTab: true
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                highlightMoveDuration: 0
                highlightResizeDuration: 0
                model: root.screen.groups
                T.ScrollBar.vertical: BrandScrollBar {}

                Accessible.role: Accessible.List
                Accessible.name: S.windowResults

                Keys.onEscapePressed: event => {
                    event.accepted = root.screen.searchText.length > 0
                    root.screen.searchText = ""
                }
                onCurrentIndexChanged: {
                    const row = currentItem as LanguageRow
                    if (row && !root.placing) root.currentId = row.groupId
                }

                delegate: LanguageRow {
                    required property int index

                    width: ListView.view.width
                    focus: ListView.isCurrentItem
                    current: ListView.isCurrentItem && list.activeFocus
                    onToggled: root.screen.toggleKept(groupId)
                    onPressed: {
                        list.currentIndex = index
                        root.currentId = groupId
                        list.forceActiveFocus(Qt.MouseFocusReason)
                    }
                    // A key that is held would leave it to chance.
                    Keys.onSpacePressed: event => { if (!event.isAutoRepeat) toggled() }
                    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) toggled() }
                    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) toggled() }
                }
            }
        }
    }
}
