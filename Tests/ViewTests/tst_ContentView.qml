import QtQuick
import QtTest
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words
import "Find.js" as Find

Item {
    id: page

    width: 1120
    // Tall enough for all rows, and some room below them.
    height: 1400

    ContentView { id: content; anchors.fill: parent }

    TestCase {
        name: "ContentView"
        when: windowShown

        function initTestCase() {
            Theme.reducedMotion = true
            App.consent.accept()
        }

        function init() {
            sidebar().restTime = 0
            sidebar().choose("smartScan")
            row("smartScan").forceActiveFocus(Qt.TabFocusReason)
        }

        function rows() {
            return Find.all(content, item => item instanceof SidebarEntry).sort((a, b) => a.y - b.y)
        }

        function row(key) {
            return rows().find(row => row.key === key)
        }

        function sidebar() {
            return Find.all(content, item => item instanceof Sidebar)[0]
        }

        function detail() {
            return Find.all(content, item => item instanceof DetailArea)[0]
        }

        function test_theRowsStandInTheirOrder() {
            compare(rows().map(row => row.key), [
                "smartScan", "dashboard", "performance", "history",
                "systemJunk", "uninstaller", "appLanguages", "loginItems", "developerJunk", "mailAttachments",
                "browserCaches", "unusedApps", "trash",
                "duplicates", "largeFiles", "similarImages", "screenshots", "downloadsJunk", "iosBackups",
                "messagesAttachments", "diskMap"])
            compare(row("systemJunk").title, S.moduleSystemJunkTitle)
            compare(row("systemJunk").subtitle, S.moduleSystemJunkSubtitle)
        }

        function test_theSectionsStandAboveTheirModules() {
            const cleanup = Find.named(content, S.sectionCleanup)
            const space = Find.named(content, S.sectionSpace)
            verify(cleanup.y < row("systemJunk").y && cleanup.y > row("history").y)
            verify(space.y < row("duplicates").y && space.y > row("trash").y)
        }

        function test_theArrowKeysGoThroughTheRowsAndStopAtTheEnds() {
            keyClick(Qt.Key_Up)
            tryCompare(sidebar(), "passing", "")
            compare(content.selection, "smartScan")
            keyClick(Qt.Key_Down)
            tryCompare(content, "selection", "dashboard")
            verify(row("dashboard").activeFocus)
            for (let i = 0; i < 30; ++i) keyClick(Qt.Key_Down)
            tryCompare(content, "selection", "diskMap")
            verify(row("diskMap").visualFocus && row("diskMap").selected)
        }

        function pass(steps) {
            // The arrow keys never rest.
            sidebar().restTime = 1000000
            for (let i = 0; i < steps; ++i) keyClick(Qt.Key_Down)
        }

        function test_whatTheArrowKeysPassIsNotOpened() {
            pass(6)
            verify(row("appLanguages").selected && row("appLanguages").visualFocus)
            verify(!row("smartScan").selected)
            compare(detail().screen, "smartScan")
        }

        function test_leavingTheRowsOpensTheOneThatTheArrowKeysAreOn() {
            pass(6)
            keyClick(Qt.Key_Tab)
            compare(content.selection, "appLanguages")
            compare(detail().screen, "appLanguages")
            verify(detail().activeFocus)
            compare(sidebar().passing, "")
        }

        function test_enterOpensTheRowThatTheArrowKeysAreOnAndDoesItsAct() {
            pass(6)
            stage.hold()
            keyClick(Qt.Key_Return)
            compare(content.selection, "appLanguages")
            tryVerify(() => Find.button(detail(), S.actionStop) !== null)
            stage.letGo()
            stage.settle()
        }

        function test_aClickCountsAndNotWhereTheArrowKeysWere() {
            pass(6)
            mouseClick(row("history"))
            compare(content.selection, "history")
            verify(row("history").selected && !row("appLanguages").selected)
            pass(1)
            content.selection = "trash"
            verify(row("trash").selected)
            compare(sidebar().passing, "")
        }

        function test_aClickSelectsAndOneWithControlDeselects() {
            mouseClick(row("history"))
            compare(content.selection, "history")
            mouseClick(row("history"), 20, 10, Qt.LeftButton, Qt.ControlModifier)
            compare(content.selection, "")
            verify(rows().every(row => !row.selected))
            compare(detail().screen, "smartScan")
        }

        function test_aClickBelowTheLastRowDeselectsAndOneOnATitleDoesNot() {
            content.selection = "history"
            mouseClick(Find.named(content, S.sectionCleanup))
            compare(content.selection, "history")
            mouseClick(content, 100, 1390)
            compare(content.selection, "")
        }

        function test_aScreenThatIsNotBuiltSaysSo_data() {
            return [{ tag: "smartScan" }, { tag: "dashboard" }, { tag: "performance" }, { tag: "diskMap" }, { tag: "trash" }]
        }

        function test_aScreenThatIsNotBuiltSaysSo(data) {
            content.selection = data.tag
            verify(Find.says(detail(), S.windowNotBuiltYet))
            verify(Find.says(detail(), Screens.titleOf(data.tag)))
            compare(Find.all(detail(), item => typeof item.clicked === "function").length, 0)
        }

        function test_aModuleShowsWhatItCouldFreeOnceItWasScanned() {
            compare(row("largeFiles").figure, "")
            content.selection = "largeFiles"
            Find.button(detail(), S.actionScan).clicked()
            stage.settle()
            tryVerify(() => row("largeFiles").figure.length > 0)
            stage.scansGo("empty")
            Find.button(detail(), S.actionScan).clicked()
            stage.settle()
            tryCompare(row("largeFiles"), "figure", "")
            stage.scansGo("findings")
        }

        function test_aModuleKeepsWhatItFoundAndForgetsTheSearch() {
            content.selection = "systemJunk"
            Find.button(detail(), S.actionScan).clicked()
            stage.settle()
            const field = () => Find.all(detail(), item => item instanceof SearchField)[0]
            tryVerify(() => field() !== undefined)
            field().text = "log"
            content.selection = "duplicates"
            verify(!Find.says(detail(), "log"))
            content.selection = "systemJunk"
            tryVerify(() => field() !== undefined)
            compare(field().text, "")
        }

        function test_enterOnTheSelectedRowDoesWhatTheScreenIsThereFor() {
            content.selection = "loginItems"
            row("loginItems").forceActiveFocus(Qt.TabFocusReason)
            stage.hold()
            keyClick(Qt.Key_Return)
            tryVerify(() => Find.button(detail(), S.actionStop) !== null)
            stage.letGo()
            stage.settle()
        }

        function test_theMenuHoldsTheDisabledSearchForUpdates() {
            Find.button(content, S.windowMenu).clicked()
            const overlay = page.Window.window.contentItem
            tryVerify(() => Find.button(overlay, S.updatesCheck) !== null)
            verify(!Find.button(overlay, S.updatesCheck).enabled)
            verify(Find.button(overlay, S.menuBarQuit).enabled)
            keyClick(Qt.Key_Escape)
            tryVerify(() => Find.button(overlay, S.updatesCheck) === null)
        }

        function test_theMenusButtonClosesItToo() {
            const overlay = page.Window.window.contentItem
            const isOpen = () => Find.button(overlay, S.menuBarQuit) !== null
            mouseClick(Find.button(content, S.windowMenu))
            tryVerify(isOpen)
            mouseClick(Find.button(content, S.windowMenu))
            tryVerify(() => !isOpen())
            mouseClick(Find.button(content, S.windowMenu))
            tryVerify(isOpen)
            mouseClick(content, 900, 600)
            tryVerify(() => !isOpen())
        }

        function dragTheHandle(by) {
            const handle = Find.all(content, item => item instanceof SidebarHandle)[0]
            mouseDrag(handle, handle.width / 2, 300, by, 0)
        }

        function test_theSidebarIsDraggedBetweenItsLimits() {
            const sidebar = Find.all(content, item => item instanceof Sidebar)[0]
            dragTheHandle(300)
            compare(sidebar.width, 380)
            dragTheHandle(-300)
            compare(sidebar.width, 248)
            dragTheHandle(16)
        }

        function test_inTheSmallestWindowTheWidestSidebarLeavesRoomForTheFooterAndTheSearch() {
            content.selection = "systemJunk"
            Find.button(detail(), S.actionScan).clicked()
            stage.settle()
            tryVerify(() => Find.button(detail(), S.actionClean) !== null)
            dragTheHandle(300)
            page.width = 940
            const end = Find.button(detail(), S.actionSelectNone)
            const next = Find.named(detail(), S.moduleSelectedCount(7))
            verify(end.mapToItem(page, end.width, 0).x < next.mapToItem(page, 0, 0).x)
            verify(Find.all(detail(), item => item instanceof SearchField)[0].width >= 120)
            compare(detail().width, 676)
            page.width = 1120
            compare(detail().width, 740)
            dragTheHandle(-116)
        }

        function test_everyRowHasARoleAndAName() {
            for (const entry of rows()) {
                compare(entry.Accessible.role, Accessible.ListItem, entry.key)
                compare(entry.Accessible.name, entry.title)
            }
        }
    }
}
