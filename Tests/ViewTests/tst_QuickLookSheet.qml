import QtQuick
import QtTest
import Tavrin.Theme
import "Find.js" as Find

Item {
    id: page

    readonly property string files: Qt.resolvedUrl("fixtures/").toString()

    width: 900
    height: 640

    SignalSpy { id: told; target: QuickLook; signalName: "factsChanged" }
    GhostButton { id: below; text: "Below" }
    QuickLookSheet { id: sheet; title: "Quick Look"; closeName: "Close"; created: "Created"; modified: "Modified" }

    TestCase {
        name: "QuickLookSheet"
        when: windowShown

        function init() {
            Theme.reducedMotion = true
            below.forceActiveFocus()
        }

        function cleanup() {
            QuickLook.close()
            tryVerify(() => !sheet.visible)
            page.width = 900
            page.height = 640
        }

        function show(name) {
            QuickLook.show(page.files + name)
            tryVerify(() => sheet.opened)
        }

        function test_aPictureIsShown() {
            show("picture.png")
            tryVerify(() => sheet.showsPicture)
            compare(QuickLook.name, "picture.png")
            tryVerify(() => QuickLook.size.length > 0)
        }

        function picture() {
            return Find.all(page.Window.window.contentItem, item => item.asynchronous && item.paintedWidth > 0)[0]
        }

        function test_aSmallPictureKeepsItsSize() {
            show("picture.png")
            tryVerify(() => sheet.showsPicture)
            compare(picture().paintedWidth, 96)
            compare(picture().paintedHeight, 64)
            compare(picture().x + picture().width / 2, picture().parent.width / 2)
        }

        function test_aLargePictureIsFitted() {
            page.width = 200
            show("picture.png")
            tryVerify(() => sheet.showsPicture)
            verify(picture().parent.width < 96)
            compare(picture().paintedWidth, picture().parent.width)
            fuzzyCompare(picture().paintedHeight * 96, picture().paintedWidth * 64, 1)
        }

        function test_aTextIsShownSafely() {
            show("notes.txt")
            tryVerify(() => QuickLook.isText)
            verify(QuickLook.text.startsWith("What was on the desk"))
            verify(QuickLook.text.includes("(\uFFFD)"))
        }

        function text() {
            return Find.all(page.Window.window.contentItem, item => item.contentY !== undefined && item.text === undefined)[0]
        }

        function test_aLongTextIsReadByKeyboard() {
            page.height = 260
            show("notes.txt")
            tryVerify(() => QuickLook.isText)
            tryVerify(() => text().contentHeight > text().height)
            const end = text().contentHeight - text().height
            keyClick(Qt.Key_Down)
            verify(text().contentY > 0)
            keyClick(Qt.Key_Up)
            compare(text().contentY, 0)
            keyClick(Qt.Key_PageDown)
            verify(text().contentY > 0 && text().contentY <= end)
            keyClick(Qt.Key_PageUp)
            compare(text().contentY, 0)
            keyClick(Qt.Key_End)
            compare(text().contentY, end)
            keyClick(Qt.Key_Down)
            compare(text().contentY, end)
            keyClick(Qt.Key_Home)
            compare(text().contentY, 0)
        }

        function test_aTextThatIsInViewStaysWhereItIs() {
            show("notes.txt")
            tryVerify(() => QuickLook.isText)
            for (const key of [Qt.Key_Down, Qt.Key_PageDown, Qt.Key_End]) keyClick(key)
            compare(text().contentY, 0)
        }

        function test_itsButtonClosesIt_data() {
            return [{ tag: "mouse" }, { tag: "keyboard" }]
        }

        function test_itsButtonClosesIt(row) {
            show("notes.txt")
            const button = Find.button(page.Window.window.contentItem, "Close")
            if (row.tag === "mouse") {
                mouseClick(button)
            } else {
                keyClick(Qt.Key_Tab)
                verify(button.activeFocus)
                keyClick(Qt.Key_Return)
            }
            tryVerify(() => !sheet.visible)
            tryVerify(() => below.activeFocus)
        }

        function test_whatIsGoneHasItsNameAndNothingElse() {
            told.clear()
            show("gone.txt")
            // Once for the name, and once for what the disk answered.
            tryCompare(told, "count", 2)
            compare(QuickLook.name, "gone.txt")
            compare(QuickLook.size + QuickLook.text + QuickLook.created + QuickLook.modified, "")
            verify(!QuickLook.isText && !sheet.showsPicture)
        }

        function test_escapeAndSpaceCloseIt_data() {
            return [{ tag: "escape", key: Qt.Key_Escape }, { tag: "space", key: Qt.Key_Space }]
        }

        function test_escapeAndSpaceCloseIt(row) {
            show("notes.txt")
            keyClick(row.key)
            tryVerify(() => !sheet.visible)
            compare(QuickLook.url, "")
            tryVerify(() => below.activeFocus)
        }
    }
}
