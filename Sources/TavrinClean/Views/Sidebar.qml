pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words

/**
 * The list of screens. The arrow keys go through it, and the screen follows once they rest; Tab leaves it. A click with
 * Ctrl on the selected row, or one below the last row, leaves nothing selected.
 *
 * Sidebar { cleanup: App.cleanupModules; space: App.spaceModules; selection: now; onChosen: key => now = key }
 */
FocusScope {
    id: root

    required property ModulesModel cleanup
    required property ModulesModel space
    /// The key of the selected screen; empty when none is.
    required property string selection

    signal chosen(string key)
    /// Enter on the row that is selected already: the screen's own first action is meant.
    signal entered()

    /// How long the arrow keys rest before the screen follows, in milliseconds. A module that is merely passed isn't
    /// opened: each that is opened may cost the oldest one what it has found.
    property int restTime: 200
    /// The row that the arrow keys are on, ahead of its screen; empty while they rest.
    property string passing

    readonly property string lit: passing.length > 0 ? passing : selection
    /// The row that Tab comes to.
    readonly property string stop: lit.length > 0 ? lit : Screens.first

    /// All rows from top to bottom.
    function entries() {
        return Array.from(list.children).filter(item => item instanceof SidebarEntry).sort((a, b) => a.y - b.y)
    }

    function reveal(row) {
        const margin = Theme.spacingHuge
        if (row.y < pane.contentY + margin)
            pane.contentY = Math.max(0, row.y - margin)
        else if (row.y + row.height > pane.contentY + pane.height - margin)
            pane.contentY = Math.min(pane.contentHeight - pane.height, row.y + row.height + margin - pane.height)
    }

    function step(by) {
        const all = entries()
        const now = all.findIndex(row => row.key === lit)
        const row = all[Math.max(0, Math.min(all.length - 1, now < 0 ? 0 : now + by))]
        // First, so that it knows that the keyboard came: the light moves the focus as well.
        row.forceActiveFocus(Qt.TabFocusReason)
        passing = row.key
        rest.restart()
        reveal(row)
    }

    function choose(key) {
        rest.stop()
        chosen(key)
        passing = ""
    }

    /// The screen follows now.
    function arrive() {
        if (passing.length > 0) choose(passing)
    }

    onSelectionChanged: passing = ""

    Timer {
        id: rest

        interval: root.restTime
        onTriggered: root.arrive()
    }

    Keys.onUpPressed: step(-1)
    Keys.onDownPressed: step(1)

    Accessible.role: Accessible.List
    Accessible.name: S.windowSidebar

    Rectangle {
        anchors.fill: parent
        color: Brand.black(0.18)
    }
    Item {
        id: head

        width: parent.width
        height: 68

        GemLogo {
            id: gem

            x: 14
            anchors.verticalCenter: parent.verticalCenter
            width: 40
            height: 40
            animate: false
        }
        ProductName {
            anchors { left: gem.right; leftMargin: 10; verticalCenter: parent.verticalCenter }
        }
        AppMenuButton {
            anchors { right: parent.right; rightMargin: 10; verticalCenter: parent.verticalCenter }
        }
    }
    Flickable {
        id: pane

        anchors { left: parent.left; right: parent.right; top: head.bottom; bottom: parent.bottom }
        contentHeight: list.implicitHeight + Theme.spacing
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: BrandScrollBar {}

        TapHandler {
            onTapped: eventPoint => {
                if (list.mapFromItem(null, eventPoint.scenePosition).y > list.height) root.choose("")
            }
        }

        Column {
            id: list

            x: 10
            width: parent.width - 20
            spacing: 2

            component Entry: SidebarEntry {
                width: list.width
                selected: key === root.lit
                isStop: key === root.stop
                onChosen: root.choose(key)
                onDeselected: root.choose("")
                // Before the keyboard leaves, so that it comes to the screen that is lit.
                Keys.onTabPressed: event => { root.arrive(); event.accepted = false }
                Keys.onBacktabPressed: event => { root.arrive(); event.accepted = false }
                onEntered: {
                    root.arrive()
                    root.entered()
                }
            }
            component ModuleEntry: Entry {
                required property string capsule
                required subtitle

                figure: capsule
                symbolTint: Brand.gold
            }
            component Heading: SectionTitle {
                width: list.width
                topPadding: Theme.spacingLarge
                bottomPadding: 6
                leftPadding: 10
            }

            Repeater {
                model: Screens.leading

                Entry {
                    required property string modelData

                    key: modelData
                    title: Screens.titleOf(key)
                    symbol: Screens.symbolOf(key)
                    emphasised: key === Screens.first
                    symbolTint: emphasised ? Brand.gold : Brand.lavender
                }
            }
            Heading { text: root.cleanup.title }
            Repeater {
                model: root.cleanup

                ModuleEntry {}
            }
            Entry {
                key: Screens.belowCleanup
                title: Screens.titleOf(key)
                symbol: Screens.symbolOf(key)
            }
            Heading { text: root.space.title }
            Repeater {
                model: root.space

                ModuleEntry {}
            }
            Entry {
                key: Screens.belowSpace
                title: Screens.titleOf(key)
                symbol: Screens.symbolOf(key)
            }
        }
    }
    Rectangle {
        anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
        width: 1
        color: Brand.white(0.08)
    }
}
