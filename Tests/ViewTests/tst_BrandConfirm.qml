import QtQuick
import QtTest
import Tavrin.Theme

Item {
    id: page

    property bool asking: false

    width: 800
    height: 600

    GhostButton { id: below; text: "Below" }

    BrandConfirm {
        id: sheet

        presented: page.asking
        title: "Move?"
        message: "34 items"
        cancelTitle: "Cancel"
        confirmTitle: "Move"
        onDismissed: {
            page.asking = false
            page.told += "dismissed "
        }
        onConfirmed: page.told += "confirmed "
    }
    property string told

    SignalSpy { id: belowClicks; target: below; signalName: "clicked" }

    TestCase {
        name: "BrandConfirm"
        when: windowShown

        function focused() {
            return page.Window.window.activeFocusItem
        }

        function init() {
            Theme.reducedMotion = true
            page.told = ""
            belowClicks.clear()
            below.forceActiveFocus()
            page.asking = true
            tryVerify(() => sheet.opened)
        }

        function cleanup() {
            page.asking = false
            tryVerify(() => !sheet.visible)
        }

        function test_theSafeAnswerHasTheKeyboardAndEnterGivesIt() {
            compare(focused().text, "Cancel")
            keyClick(Qt.Key_Return)
            compare(page.told, "dismissed ")
            verify(!page.asking)
        }

        function test_escapeGivesTheSafeAnswer() {
            keyClick(Qt.Key_Escape)
            compare(page.told, "dismissed ")
        }

        function test_escapeOnTheDestructiveAnswerStillGivesTheSafeOne() {
            keyClick(Qt.Key_Tab)
            compare(focused().text, "Move")
            keyClick(Qt.Key_Escape)
            compare(page.told, "dismissed ")
        }

        function test_tabGoesRoundInside() {
            keyClick(Qt.Key_Tab)
            compare(focused().text, "Move")
            keyClick(Qt.Key_Tab)
            compare(focused().text, "Cancel")
            keyClick(Qt.Key_Backtab, Qt.ShiftModifier)
            compare(focused().text, "Move")
        }

        function test_theDestructiveAnswerClosesItFirstAndIsToldThen() {
            keyClick(Qt.Key_Tab)
            keyClick(Qt.Key_Space)
            compare(page.told, "dismissed confirmed ")
            verify(!sheet.visible)
        }

        function test_whatLiesBelowIsOutOfReach() {
            mouseClick(below)
            compare(belowClicks.count, 0)
            verify(sheet.visible)
        }

        function test_afterwardsTheKeyboardIsWhereItWas() {
            keyClick(Qt.Key_Escape)
            tryVerify(() => focused() === below)
        }

        function test_itIsAtMost400Wide() {
            compare(sheet.width, 400)
        }

        function test_itCanBeAskedAgain() {
            keyClick(Qt.Key_Escape)
            page.asking = true
            tryVerify(() => sheet.opened)
            compare(focused().text, "Cancel")
        }
    }
}
