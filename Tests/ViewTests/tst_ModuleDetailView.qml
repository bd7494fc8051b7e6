import QtQuick
import QtTest
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words
import "Find.js" as Find

Item {
    id: page

    width: 800
    height: 620

    Component {
        id: maker

        ModuleDetailView {
            anchors.fill: page
            focus: true
        }
    }

    TestCase {
        name: "ModuleDetailView"
        when: windowShown

        property Item view

        function initTestCase() {
            Theme.reducedMotion = true
        }

        function open(key) {
            view = createTemporaryObject(maker, page, { moduleKey: key })
            view.forceActiveFocus()
        }

        function scanned(key, how) {
            open(key)
            stage.scansGo(how)
            button(S.actionScan).clicked()
            stage.settle()
        }

        function button(name) {
            return Find.button(view, name)
        }

        function says(text) {
            return Find.says(view, text)
        }

        function sheet() {
            return Find.all(page.Window.window.contentItem, item => item.Accessible.role === Accessible.Dialog)[0]
        }

        function cleanup() {
            stage.letGo()
            stage.settle()
            stage.scansGo("findings")
            stage.cleansGo("well")
        }

        function test_idleItTellsWhatTheModuleIsForAndEnterScans() {
            open("unusedApps")
            verify(says(S.moduleUnusedAppsTitle) && says(S.moduleUnusedAppsSubtitle))
            stage.hold()
            keyClick(Qt.Key_Return)
            tryVerify(() => button(S.actionStop) !== null)
        }

        function test_scanningItShowsHowFarItIsAndCanBeStopped() {
            open("developerJunk")
            stage.hold()
            button(S.actionScan).clicked()
            tryVerify(() => says(S.scanCheckingLabel("Caches")))
            const line = Find.all(view, item => item instanceof ProgressLine)[0]
            compare(line.fraction, 0.42)
            verify(says(S.moduleItemsFound(12)))
            mouseClick(button(S.actionStop))
            stage.settle()
            tryVerify(() => button(S.actionScan) !== null)
        }

        function test_nothingFoundIsGoodNews() {
            scanned("iosBackups", "empty")
            tryVerify(() => says(S.moduleNothingToClean))
            verify(button(S.actionClean) === null)
        }

        function test_aRefusalShowsTheWayToAllowIt() {
            scanned("messagesAttachments", "denied")
            tryVerify(() => says(S.fdaTitle))
            verify(says(S.fdaMailBody) && says(S.fdaSteps))
            stage.forget()
            mouseClick(button(S.fdaOpenSettings))
            compare(stage.asked(), ["access"])
            stage.scansGo("findings")
            mouseClick(button(S.actionScanAgain))
            stage.settle()
            tryVerify(() => says(S.countItems(8)))
        }

        function test_aFailureTellsItsReason() {
            scanned("browserCaches", "broken")
            tryVerify(() => says(S.moduleError("the disk went away")))
        }

        function test_foldersThatCouldNotBeReadAreTold() {
            scanned("browserCaches", "blocked")
            tryVerify(() => says(S.moduleScanPartial(2)))
        }

        function confirm() {
            button(S.actionClean).clicked()
            tryVerify(() => sheet() !== undefined)
            Find.button(page.Window.window.contentItem, S.moduleConfirmAction).clicked()
        }

        function shows(type) {
            return Find.all(view, item => item instanceof type).length === 1
        }

        function test_aModuleWithANoteShowsItInEveryPhase() {
            const showsItOn = type => {
                tryVerify(() => shows(type))
                verify(says(S.moduleNoteYourFiles), type)
            }
            open("downloadsJunk")
            showsItOn(IdlePage)
            stage.hold()
            button(S.actionScan).clicked()
            showsItOn(ScanningPage)
            stage.letGo()
            stage.settle()
            showsItOn(ResultsPage)
            stage.hold()
            confirm()
            showsItOn(ScanningPage)
            stage.letGo()
            stage.settle()
            showsItOn(DonePage)
            stage.scansGo("denied")
            button(S.actionScan).clicked()
            stage.settle()
            showsItOn(AccessPage)
            stage.scansGo("broken")
            button(S.actionScanAgain).clicked()
            stage.settle()
            tryVerify(() => says(S.moduleError("the disk went away")))
            verify(says(S.moduleNoteYourFiles))
        }

        function test_mailIsAskedAboutWithItsWarningAndHasItsOwnSummary() {
            scanned("mailAttachments", "findings")
            tryVerify(() => button(S.actionSelectAll) !== null)
            button(S.actionSelectAll).clicked()
            button(S.actionClean).clicked()
            tryVerify(() => sheet() !== undefined)
            compare(sheet().Accessible.description, S.moduleConfirmMove(3, "20.5 MB") + S.moduleConfirmMailWarning)
            Find.button(page.Window.window.contentItem, S.moduleConfirmAction).clicked()
            stage.settle()
            tryVerify(() => says(S.moduleDoneMail("20.5 MB", 3)))
        }

        function test_theEyeOfAPictureLooksAtIt() {
            scanned("screenshots", "findings")
            tryVerify(() => button(S.actionQuickLook) !== null)
            const eye = button(S.actionQuickLook)
            const row = Find.all(view, item => item instanceof ItemRow).find(row => Find.button(row, S.actionQuickLook) === eye)
            mouseClick(eye)
            compare(QuickLook.url, row.url)
            QuickLook.close()
        }

        function test_theFooterSelectsAllAndNone() {
            scanned("systemJunk", "findings")
            tryVerify(() => button(S.actionSelectAll) !== null)
            mouseClick(button(S.actionSelectAll))
            tryVerify(() => says(S.moduleSelectedCount(8)))
            mouseClick(button(S.actionSelectNone))
            tryVerify(() => says(S.moduleSelectedCount(0)))
            verify(!button(S.actionClean).enabled)
            compare(button(S.actionClean).opacity, 0.5)
        }

        function test_controlAAndControlF() {
            scanned("systemJunk", "findings")
            tryVerify(() => button(S.actionSelectNone) !== null)
            button(S.actionSelectNone).clicked()
            keyClick(Qt.Key_A, Qt.ControlModifier)
            tryVerify(() => says(S.moduleSelectedCount(8)))
            keyClick(Qt.Key_F, Qt.ControlModifier)
            const field = Find.all(view, item => item instanceof SearchField)[0]
            verify(field.activeFocus)
            button(S.actionSelectNone).clicked()
            keyClick(Qt.Key_A, Qt.ControlModifier)
            tryVerify(() => says(S.moduleSelectedCount(0)))
        }

        function test_theQuestionSpeaksOfPathsAndItsSafeAnswerHasTheKeyboard() {
            scanned("uninstaller", "findings")
            tryVerify(() => button(S.actionSelectAll) !== null)
            button(S.actionSelectAll).clicked()
            mouseClick(button(S.actionClean))
            tryVerify(() => sheet() !== undefined)
            compare(sheet().Accessible.name, S.moduleConfirmTitle)
            verify(sheet().Accessible.description.startsWith(S.moduleConfirmMove(4, "850 MB")), sheet().Accessible.description)
            compare(page.Window.window.activeFocusItem.text, S.actionCancel)
            stage.forget()
            keyClick(Qt.Key_Escape)
            tryVerify(() => sheet() === undefined)
            compare(stage.asked(), [])
        }

        function test_cleaningEndsInASummary() {
            scanned("systemJunk", "findings")
            tryVerify(() => button(S.actionClean) !== null)
            stage.forget()
            stage.hold()
            button(S.actionClean).clicked()
            tryVerify(() => sheet() !== undefined)
            keyClick(Qt.Key_Tab)
            keyClick(Qt.Key_Return)
            tryVerify(() => button(S.actionStop) !== null)
            stage.letGo()
            stage.settle()
            tryVerify(() => says(S.smartDoneSummary("2.5 GB", 7)))
            compare(stage.asked(), ["clean 7", "banner " + S.notifyCleanedTitle])
        }

        function test_whatFailedIsListedWithItsReason_data() {
            return [{ tag: "partly", symbol: "exclamationmark.circle.fill", failures: 3 },
                    { tag: "badly", symbol: "exclamationmark.triangle.fill", failures: 7 }]
        }

        function test_whatFailedIsListedWithItsReason(data) {
            scanned("systemJunk", "findings")
            tryVerify(() => button(S.actionClean) !== null)
            stage.cleansGo(data.tag)
            confirm()
            stage.settle()
            tryVerify(() => says(S.cleanFailuresTitle(data.failures)))
            const rows = Find.all(view, item => item instanceof FailureRow)
            verify(rows.length > 0)
            compare(rows[0].reason, "You don't have permission to do that.")
            verify(Find.all(view, item => item.key === data.symbol).length === 1)
        }

        function test_theKeyboardGoesThroughWhatFailedAndHearsWhereItLies() {
            scanned("systemJunk", "findings")
            tryVerify(() => button(S.actionClean) !== null)
            stage.cleansGo("partly")
            confirm()
            stage.settle()
            tryVerify(() => says(S.cleanFailuresTitle(3)))
            const list = Find.all(view, item => item.Accessible.name === S.windowFailures)[0]
            list.forceActiveFocus(Qt.TabFocusReason)
            verify(list.currentItem.current && list.currentItem.activeFocus)
            keyClick(Qt.Key_Down)
            compare(list.currentIndex, 1)
            const row = list.currentItem
            verify(row.current && row.activeFocus)
            verify(Find.all(row, item => item instanceof FocusRing)[0].visible)
            verify(row.path.startsWith("/") && row.path.endsWith("/" + row.name), row.path)
            compare(row.Accessible.description, row.reason + " · " + row.path)
            tryVerify(() => Find.all(row, item => item instanceof HelpTip)[0].shown)
        }
    }
}
