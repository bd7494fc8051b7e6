import QtQuick
import QtTest
import Tavrin.Theme
import "Find.js" as Find

Item {
    id: page

    property int escapes: 0

    width: 400
    height: 300
    Keys.onEscapePressed: ++escapes

    SearchField { id: field; placeholder: "Search…"; clearName: "Clear the search" }

    TestCase {
        name: "SearchField"
        when: windowShown

        function init() {
            field.text = ""
            page.escapes = 0
            field.forceActiveFocus()
        }

        function test_whatIsTypedStandsInIt() {
            keyClick(Qt.Key_A)
            keyClick(Qt.Key_B)
            compare(field.text, "ab")
        }

        function test_escapeEmptiesItFirstAndIsLeftToOthersThen() {
            keyClick(Qt.Key_A)
            keyClick(Qt.Key_Escape)
            compare(field.text, "")
            compare(page.escapes, 0)
            keyClick(Qt.Key_Escape)
            compare(page.escapes, 1)
        }

        function test_theCrossEmptiesItAndKeepsTheKeyboardInIt() {
            keyClick(Qt.Key_A)
            mouseClick(field, field.width - 18, field.height / 2)
            compare(field.text, "")
            verify(field.activeFocus)
        }

        function test_screenReadersFindTheCrossByItsName() {
            verify(Find.button(field, "Clear the search") === null)
            keyClick(Qt.Key_A)
            const cross = Find.button(field, "Clear the search")
            verify(!cross.Accessible.ignored)
            cross.Accessible.pressAction()
            compare(field.text, "")
        }

        function test_screenReadersHearWhatItIsFor() {
            compare(field.Accessible.name, "Search…")
            compare(field.Accessible.role, Accessible.EditableText)
        }
    }
}
