import QtQuick
import QtTest
import Tavrin.Theme
import "Find.js" as Find

Item {
    width: 400
    height: 300

    MenuPicker { id: picker; label: "Sort by"; model: ["Size", "Name", "Date"] }

    MenuPicker {
        id: bare

        y: 50
        label: "Sort by"
        labelHidden: true
        model: ["Size", "Fecha (más reciente primero)", "Date"]
    }

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

        function test_itsWidthIsTheSameWhateverIsChosen() {
            const width = bare.width
            verify(width >= bare.widest + bare.leftPadding + bare.rightPadding)
            bare.currentIndex = 1
            compare(bare.width, width)
            bare.model = ["Size", "Name", "Date"]
            tryVerify(() => bare.width < width)
            bare.model = ["Size", "Fecha (más reciente primero)", "Date"]
            tryCompare(bare, "width", width)
        }

        function test_noEntryIsCutShort() {
            bare.popup.open()
            tryVerify(() => bare.popup.opened)
            const entries = Find.all(bare.popup.contentItem, item => item.truncated !== undefined)
            compare(entries.length, 3)
            for (const entry of entries) verify(!entry.truncated, entry.text)
            bare.popup.close()
        }

        function test_theKeyboardIsOnItAgainAfterItsMenu() {
            picker.forceActiveFocus()
            keyClick(Qt.Key_Space)
            tryVerify(() => picker.popup.opened)
            keyClick(Qt.Key_Escape)
            tryVerify(() => !picker.popup.visible)
            verify(picker.activeFocus)
        }

        function test_screenReadersHearTheLabelAndTheValue() {
            compare(picker.Accessible.name, "Sort by")
            compare(picker.Accessible.description, "Size")
            picker.Accessible.pressAction()
            tryVerify(() => picker.popup.opened)
        }
    }
}
