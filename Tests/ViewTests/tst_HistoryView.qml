import QtQuick
import QtTest
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words
import "Find.js" as Find

Item {
    id: page

    width: 800
    height: 620

    HistoryView {
        id: view

        anchors.fill: parent
        focus: true
    }

    TestCase {
        name: "HistoryView"
        when: windowShown

        function initTestCase() {
            Theme.reducedMotion = true
        }

        function cleanup() {
            stage.letGo()
            stage.settle()
            stage.putBackFails(0)
        }

        function rows() {
            return Find.all(view, item => item instanceof HistoryRow).sort((a, b) => a.y - b.y)
        }

        function sheet() {
            return Find.all(page.Window.window.contentItem, item => item.Accessible.role === Accessible.Dialog)[0]
        }

        function test_1_anEmptyHistorySaysSo() {
            verify(Find.says(view, S.historyEmptyTitle) && Find.says(view, S.historyEmptySubtitle))
            verify(Find.says(view, S.historyTotalReclaimed("Zero KB")))
            verify(Find.button(view, S.historyClearLog) === null)
        }

        function test_2_aRecordShowsWhatWasCleaned() {
            stage.addRecord("systemJunk", 3, 2500000)
            tryVerify(() => rows().length === 1)
            compare(rows()[0].title, S.moduleSystemJunkTitle)
            compare(rows()[0].summary, S.countItemsSize(3, "2.5 MB"))
            verify(rows()[0].dateText.length > 0)
            verify(Find.button(view, S.historyClearLog) !== null)
        }

        function test_3_anEmptiedTrashCannotBePutBackAndCountsAsFreed() {
            stage.addRecordOfEmptiedTrash(4000000)
            tryVerify(() => rows().length === 2)
            compare(rows()[0].title, S.trashHistoryLabel)
            verify(!Find.button(rows()[0], S.historyPutBack).enabled)
            verify(Find.says(view, S.historyTotalReclaimed("4 MB")))
        }

        function test_4_whatDoesNotComeBackStays() {
            stage.putBackFails(1)
            stage.hold()
            const row = () => rows()[1]
            mouseClick(Find.button(row(), S.historyPutBack))
            tryVerify(() => row().restoring)
            verify(Find.button(row(), S.historyPutBack) === null)
            stage.letGo()
            stage.settle()
            tryVerify(() => Find.says(view, S.historyPutBackPartial(2, 1)))
            compare(rows().length, 2)
            mouseClick(Find.button(row(), S.historyPutBack))
            stage.settle()
            tryVerify(() => Find.says(view, S.historyPutBackPartial(0, 1)))
            compare(rows().length, 2)
        }

        function test_5_enterPutsBackAndTheRowLeaves() {
            const list = Find.all(view, item => item.Accessible.name === S.historyTitle && item.currentIndex !== undefined)[0]
            list.forceActiveFocus(Qt.TabFocusReason)
            list.currentIndex = 1
            keyClick(Qt.Key_Return)
            stage.settle()
            tryVerify(() => Find.says(view, S.historyPutBackDone(1)))
            tryVerify(() => rows().length === 1)
        }

        function test_6_aHeldEnterPutsBackOneRecord() {
            stage.addRecord("systemJunk", 1, 1000)
            stage.addRecord("systemJunk", 1, 1000)
            tryVerify(() => rows().length === 3)
            const list = Find.all(view, item => item.Accessible.name === S.historyTitle && item.currentIndex !== undefined)[0]
            list.forceActiveFocus(Qt.TabFocusReason)
            list.currentIndex = 0
            stage.holdKey(Qt.Key_Return)
            tryVerify(() => rows().length === 2)
            stage.holdKey(Qt.Key_Return)
            tryVerify(() => rows().length === 1)
        }

        function test_7_clearingAsksAndTellsHowMany() {
            mouseClick(Find.button(view, S.historyClearLog))
            tryVerify(() => sheet() !== undefined)
            compare(sheet().Accessible.name, S.historyClearConfirmTitle)
            compare(sheet().Accessible.description, S.historyClearConfirmMessage(1))
            compare(page.Window.window.activeFocusItem.text, S.actionCancel)
            keyClick(Qt.Key_Escape)
            tryVerify(() => sheet() === undefined)
            compare(rows().length, 1)
            mouseClick(Find.button(view, S.historyClearLog))
            tryVerify(() => sheet() !== undefined)
            keyClick(Qt.Key_Tab)
            keyClick(Qt.Key_Return)
            tryVerify(() => Find.says(view, S.historyEmptyTitle))
            verify(Find.says(view, S.historyTotalReclaimed("Zero KB")))
        }
    }
}
