import QtQuick
import QtTest
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words
import "Find.js" as Find

Item {
    id: page

    width: 760
    height: 620

    ModuleDetailView {
        id: view

        anchors.fill: parent
        moduleKey: "appLanguages"
        focus: true
    }

    TestCase {
        name: "LanguageList"
        when: windowShown

        function initTestCase() {
            Theme.reducedMotion = true
        }

        function init() {
            Find.button(view, S.actionScan).clicked()
            stage.settle()
            tryVerify(() => rows().length === 4)
            list().forceActiveFocus(Qt.TabFocusReason)
            list().currentIndex = 0
        }

        function list() {
            return Find.all(view, item => item.Accessible.name === S.windowResults)[0]
        }

        function rows() {
            return Find.all(view, item => item instanceof LanguageRow).sort((a, b) => a.y - b.y)
        }

        function row(name) {
            return rows().find(row => row.name === name)
        }

        function test_aLanguageWithoutATickIsKept() {
            verify(Find.says(view, S.moduleLanguagesHint))
            verify(row("Arabic").kept)
            verify(Find.says(row("Arabic"), S.actionKeep))
            verify(!row("Japanese").kept)
            verify(Find.says(row("Japanese"), S.actionRemove))
            compare(row("Japanese").summary, S.moduleAppsSize(3, "6 MB"))
        }

        function test_aClickTurnsIt() {
            mouseClick(row("Arabic"))
            tryVerify(() => !row("Arabic").kept)
            mouseClick(row("Arabic"))
            tryVerify(() => row("Arabic").kept)
        }

        function test_aHeldKeyTurnsItOnce() {
            const first = list().currentItem
            const before = first.kept
            stage.holdKey(Qt.Key_Space)
            compare(first.kept, !before)
            stage.holdKey(Qt.Key_Return)
            compare(first.kept, before)
        }

        function test_theKeyboardTurnsIt() {
            const first = list().currentItem
            const before = first.kept
            keyClick(Qt.Key_Space)
            tryVerify(() => first.kept !== before)
            keyClick(Qt.Key_Return)
            tryVerify(() => first.kept === before)
            keyClick(Qt.Key_Down)
            compare(list().currentIndex, 1)
        }

        function test_screenReadersHearWhatIsKept() {
            compare(row("Arabic").Accessible.role, Accessible.CheckBox)
            verify(row("Arabic").Accessible.checked)
            row("Arabic").Accessible.toggleAction()
            tryVerify(() => !row("Arabic").Accessible.checked)
        }

        function test_theKeyboardStaysOnItsLanguageInASearch() {
            list().currentIndex = 3
            compare(list().currentItem.name, "Japanese")
            keyClick(Qt.Key_F, Qt.ControlModifier)
            keyClick(Qt.Key_J)
            stage.settle()
            tryVerify(() => rows().length === 1)
            keyClick(Qt.Key_Down)
            compare(list().currentItem.name, "Japanese")
            verify(list().activeFocus)
            keyClick(Qt.Key_Escape)
            stage.settle()
            tryVerify(() => rows().length === 4)
            compare(list().currentItem.name, "Japanese")
        }

        function test_theSearchLooksAtTheLanguage() {
            keyClick(Qt.Key_F, Qt.ControlModifier)
            for (const key of [Qt.Key_J, Qt.Key_A, Qt.Key_P]) keyClick(key)
            stage.settle()
            tryVerify(() => rows().length === 1)
            compare(rows()[0].name, "Japanese")
            keyClick(Qt.Key_Escape)
            stage.settle()
            tryVerify(() => rows().length === 4)
        }
    }
}
