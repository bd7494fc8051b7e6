import QtQuick
import QtTest
import Tavrin.Theme

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
