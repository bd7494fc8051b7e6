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
    QuickLookSheet { id: sheet; title: "Quick Look"; created: "Created"; modified: "Modified" }

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
            page.width = 900
        }

        function test_aTextIsShownSafely() {
            show("notes.txt")
            tryVerify(() => QuickLook.isText)
            verify(QuickLook.text.startsWith("What was on the desk"))
            verify(QuickLook.text.includes("(\uFFFD)"))
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
