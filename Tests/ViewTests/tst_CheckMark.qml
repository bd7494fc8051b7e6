import QtQuick
import QtTest
import Tavrin.Theme

Item {
    width: 400
    height: 300

    Column {
        CheckMark { id: mark; text: "Agree" }
        BrandSwitch { id: toggle; name: "Group" }
    }

    SignalSpy { id: ticks; target: mark; signalName: "ticked" }
    SignalSpy { id: turns; target: toggle; signalName: "toggledByUser" }

    TestCase {
        name: "CheckMark"
        when: windowShown

        function init() {
            ticks.clear()
            turns.clear()
        }

        function test_everyWayToTickItIsToldAndNoneChangesItByItself() {
            mouseClick(mark)
            mark.forceActiveFocus()
            keyClick(Qt.Key_Space)
            keyClick(Qt.Key_Return)
            mark.Accessible.toggleAction()
            mark.Accessible.pressAction()
            compare(ticks.count, 5)
            compare(mark.checkState, Qt.Unchecked)
        }

        function test_screenReadersHearItsStateAndItsName() {
            compare(mark.Accessible.name, "Agree")
            compare(mark.Accessible.role, Accessible.CheckBox)
            verify(!mark.Accessible.checked)
            mark.checkState = Qt.PartiallyChecked
            verify(!mark.Accessible.checked)
            mark.checkState = Qt.Checked
            verify(mark.Accessible.checked)
            mark.checkState = Qt.Unchecked
        }

        function test_aSwitchIsTurnedByMouseAndKeyboard() {
            mouseClick(toggle)
            toggle.forceActiveFocus()
            keyClick(Qt.Key_Space)
            toggle.Accessible.toggleAction()
            compare(turns.count, 3)
            verify(!toggle.on)
            compare(toggle.Accessible.name, "Group")
        }
    }
}
