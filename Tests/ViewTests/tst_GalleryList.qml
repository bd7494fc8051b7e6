import QtQuick
import QtTest
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words
import "Find.js" as Find

Item {
    id: page

    width: 760
    height: 900

    ModuleDetailView {
        id: view

        anchors.fill: parent
        moduleKey: "similarImages"
        focus: true
    }
    QuickLookSheet { title: S.actionQuickLook; closeName: S.windowClose; created: S.windowCreated; modified: S.windowModified }

    TestCase {
        name: "GalleryList"
        when: windowShown

        function initTestCase() {
            Theme.reducedMotion = true
            Find.button(view, S.actionScan).clicked()
            stage.settle()
            tryVerify(() => cards().length > 1)
        }

        function init() {
            Find.button(view, S.actionSelectNone).clicked()
            gallery().forceActiveFocus(Qt.TabFocusReason)
            gallery().moveTo(0, 0)
        }

        function gallery() {
            return Find.all(view, item => item instanceof GalleryList)[0]
        }

        function cards() {
            return Find.all(view, item => item instanceof GalleryCard).sort((a, b) => a.y - b.y)
        }

        function cells(card) {
            return Find.all(card, item => item instanceof ImageCell)
        }

        function current() {
            return Find.all(view, item => item instanceof ImageCell && item.current)[0]
        }

        function test_eachSetIsACardWithItsPictures() {
            verify(Find.says(view, S.moduleSimilarHint))
            compare(cards()[0].name, S.moduleGroupSimilar(4))
            compare(cells(cards()[0]).length, 4)
            verify(cells(cards()[0])[0].width >= 124)
        }

        function test_aPressLeavesThePictureUnderTheMouse() {
            page.height = 380
            const list = Find.all(gallery(), item => item instanceof ListView)[0]
            list.contentY = list.originY + 60
            const before = list.contentY
            const cell = cells(cards()[0])[1]
            mousePress(cell, cell.width / 2, cell.height / 2)
            compare(list.contentY, before)
            verify(cell.current)
            mouseRelease(cell, cell.width / 2, cell.height / 2)
            keyClick(Qt.Key_Escape)
            page.height = 900
        }

        function test_whatIsNotTickedIsKept() {
            const cell = cells(cards()[0])[0]
            verify(Find.says(cell, S.actionKeep))
            cell.toggled()
            tryVerify(() => cell.ticked)
            verify(!Find.says(cell, S.actionKeep))
        }

        function test_aHeldSpaceTicksOnce() {
            const before = current().ticked
            stage.holdKey(Qt.Key_Space)
            compare(current().ticked, !before)
            keyClick(Qt.Key_Space)
            tryCompare(current(), "ticked", before)
        }

        function test_arrowsMoveSpaceTicksAndEnterLooks() {
            const first = current()
            keyClick(Qt.Key_Right)
            verify(current() !== first)
            keyClick(Qt.Key_Left)
            compare(current(), first)
            keyClick(Qt.Key_Space)
            tryVerify(() => first.ticked)
            keyClick(Qt.Key_Return)
            tryCompare(QuickLook, "url", first.url)
            keyClick(Qt.Key_Escape)
            tryCompare(QuickLook, "url", "")
        }

        function test_arrowsGoOnInTheNextSet() {
            const last = cells(cards()[0]).length - 1
            gallery().moveTo(0, last)
            keyClick(Qt.Key_Right)
            tryVerify(() => cells(cards()[1]).includes(current()))
            keyClick(Qt.Key_Left)
            tryVerify(() => current() === cells(cards()[0])[last])
        }

        function test_homeAndEndGoToTheFirstAndTheLastPicture() {
            keyClick(Qt.Key_End)
            tryVerify(() => current() === cells(cards().pop()).pop())
            compare(cards().pop().itemCount, 10)
            keyClick(Qt.Key_Home)
            tryVerify(() => current() === cells(cards()[0])[0])
        }

        function test_aPageGoesFromSetToSetAndStopsAtTheEnds() {
            keyClick(Qt.Key_PageDown)
            tryVerify(() => cells(cards()[1]).includes(current()))
            for (let i = 0; i < 5; ++i) keyClick(Qt.Key_PageDown)
            tryVerify(() => current() === cells(cards().pop()).pop())
            for (let i = 0; i < 8; ++i) keyClick(Qt.Key_PageUp)
            tryVerify(() => current() === cells(cards()[0])[0])
        }

        function test_theKeyboardOpensTheMenuOfAPicture_data() {
            return [{ tag: "menu", key: Qt.Key_Menu, modifiers: Qt.NoModifier }, { tag: "shift+f10", key: Qt.Key_F10, modifiers: Qt.ShiftModifier }]
        }

        function test_theKeyboardOpensTheMenuOfAPicture(data) {
            const overlay = page.Window.window.contentItem
            const url = current().url
            keyClick(data.key, data.modifiers)
            tryVerify(() => Find.button(overlay, S.actionShowInFinder) !== null)
            stage.forget()
            Find.button(overlay, S.actionShowInFinder).clicked()
            compare(stage.asked(), ["show " + url])
            tryVerify(() => Find.button(overlay, S.actionShowInFinder) === null)
        }

        function search(keys) {
            keyClick(Qt.Key_F, Qt.ControlModifier)
            for (const key of keys) keyClick(key)
            stage.settle()
        }

        function test_theKeyboardStaysOnItsPictureInASearchAndInAnotherOrder() {
            gallery().moveTo(1, 1)
            const url = current().url
            search([Qt.Key_Minus, Qt.Key_1])
            tryVerify(() => cells(cards()[0]).length !== 4)
            gallery().forceActiveFocus(Qt.TabFocusReason)
            compare(current().url, url)
            keyClick(Qt.Key_Escape)
            stage.settle()
            tryVerify(() => cells(cards()[0]).length === 4)
            compare(current().url, url)
            const picker = Find.all(view, item => item instanceof MenuPicker)[0]
            picker.activated(1)
            stage.settle()
            tryVerify(() => current() !== undefined)
            compare(current().url, url)
            picker.activated(0)
            stage.settle()
            tryVerify(() => cells(cards()[0]).length === 4)
        }

        function test_whereASearchHidesItsPictureTheKeyboardIsOnTheFirst() {
            gallery().moveTo(1, 6)
            const url = current().url
            search([Qt.Key_2, Qt.Key_Minus, Qt.Key_0])
            tryVerify(() => cards().length === 1)
            compare(current(), cells(cards()[0])[0])
            keyClick(Qt.Key_Escape)
            stage.settle()
            tryVerify(() => cards().length > 1)
            compare(current().url, url)
        }

        function test_theMarkTicksAndThePictureLooks() {
            const cell = cells(cards()[0])[1]
            mouseClick(cell, cell.width / 2 + 56 - 20, 24)
            tryVerify(() => cell.ticked)
            compare(QuickLook.url, "")
            mouseClick(cell, cell.width / 2, 80)
            tryCompare(QuickLook, "url", cell.url)
            keyClick(Qt.Key_Escape)
            tryCompare(QuickLook, "url", "")
        }

        function test_selectingAllLeavesTheKeepers() {
            Find.button(view, S.actionSelectAll).clicked()
            tryVerify(() => cells(cards()[0]).filter(cell => cell.ticked).length === 3)
            Find.button(view, S.actionSelectNone).clicked()
            tryVerify(() => cells(cards()[0]).every(cell => !cell.ticked))
        }

        function test_screenReadersHearWhatIsKept() {
            const cell = cells(cards()[0])[0]
            compare(cell.Accessible.role, Accessible.CheckBox)
            verify(cell.Accessible.description.startsWith(S.actionKeep))
            cell.Accessible.pressAction()
            tryVerify(() => cell.Accessible.checked)
        }
    }
}
