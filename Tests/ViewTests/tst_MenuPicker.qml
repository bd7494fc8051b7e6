import QtQuick
import QtTest
import Tavrin.Theme

Item {
    width: 400
    height: 300

    MenuPicker { id: picker; label: "Sort by"; model: ["Size", "Name", "Date"] }

    SignalSpy { id: choices; target: picker; signalName: "activated" }

    TestCase {
        name: "MenuPicker"
        when: windowShown

        function init() {
            picker.popup.close()
            picker.currentIndex = 0
            choices.clear()
        }

        function test_aChoiceByKeyboard() {
            picker.forceActiveFocus()
            keyClick(Qt.Key_Space)
            tryVerify(() => picker.popup.opened)
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Return)
            tryVerify(() => !picker.popup.visible)
            compare(choices.count, 1)
            compare(picker.currentIndex, 1)
        }

        function test_escapeChoosesNothing() {
            picker.forceActiveFocus()
            keyClick(Qt.Key_Space)
            tryVerify(() => picker.popup.opened)
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Escape)
            tryVerify(() => !picker.popup.visible)
            compare(choices.count, 0)
            compare(picker.currentIndex, 0)
        }

        function test_screenReadersHearTheLabelAndTheValue() {
            compare(picker.Accessible.name, "Sort by")
            compare(picker.Accessible.description, "Size")
            picker.Accessible.pressAction()
            tryVerify(() => picker.popup.opened)
        }
    }
}
