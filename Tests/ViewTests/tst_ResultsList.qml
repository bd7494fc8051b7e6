import QtQuick
import QtTest
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words
import "Find.js" as Find

Item {
    id: page

    width: 900
    height: 900

    ModuleDetailView {
        id: view

        anchors.fill: parent
        moduleKey: "systemJunk"
        focus: true
    }
    QuickLookSheet { id: sheet; title: "Quick Look"; closeName: "Close"; created: "Created"; modified: "Modified" }

    Component {
        id: itemRow

        ItemRow {
            name: "contract.pdf"
            url: "file:///home/anna/Mail/contract.pdf"
            detailIsPath: false
            sizeText: "14 MB"
            ticked: false
            isFolder: false
            isImage: false
            redownloads: false
            expanded: false
        }
    }

    TestCase {
        name: "ResultsList"
        when: windowShown

        function initTestCase() {
            Theme.reducedMotion = true
            stage.appsRun("com.example.music")
        }

        function init() {
            for (const field of Find.all(view, item => item instanceof SearchField)) field.clear()
            scan("findings")
        }

        function scan(how) {
            stage.scansGo(how)
            Find.button(view, S.actionScan).clicked()
            stage.settle()
            tryVerify(() => rows().length > 5)
            list().forceActiveFocus(Qt.TabFocusReason)
            list().currentIndex = 0
        }

        function list() {
            return Find.all(view, item => item.Accessible.name === S.windowResults)[0]
        }

        function rows() {
            return Find.all(view, item => item instanceof ResultsRow).sort((a, b) => a.y - b.y)
        }

        function row(name) {
            return rows().find(row => row.name === name)
        }

        function selected() {
            return Find.all(view, item => item instanceof ResultsFooter)[0].selectedCountText
        }

        function goTo(name) {
            list().currentIndex = row(name).index
        }

        function search(keys) {
            keyClick(Qt.Key_F, Qt.ControlModifier)
            for (const key of keys) keyClick(key)
            stage.settle()
        }

        function sortBy(index) {
            Find.all(view, item => item instanceof MenuPicker)[0].activated(index)
            stage.settle()
        }

        function openMenu() {
            goTo("install.log")
            keyClick(Qt.Key_Menu)
            tryVerify(() => Find.button(overlay(), S.actionShowInFinder) !== null)
        }

        function overlay() {
            return page.Window.window.contentItem
        }

        function test_theListHasTheKeyboardAgainWhenItsMenuCloses() {
            openMenu()
            keyClick(Qt.Key_Escape)
            tryVerify(() => Find.button(overlay(), S.actionShowInFinder) === null)
            verify(list().activeFocus)
            keyClick(Qt.Key_Up)
            verify(list().currentItem.name !== "install.log")
        }

        function test_theListHasTheKeyboardAgainAfterAPreviewFromItsMenu_data() {
            return [{ tag: "byKeyboard" }, { tag: "byMouse" }]
        }

        function test_theListHasTheKeyboardAgainAfterAPreviewFromItsMenu(data) {
            openMenu()
            if (data.tag === "byMouse") {
                mouseClick(Find.button(overlay(), S.actionQuickLook))
            } else {
                keyClick(Qt.Key_Down)
                keyClick(Qt.Key_Return)
            }
            tryVerify(() => sheet.opened)
            verify(!list().activeFocus)
            keyClick(Qt.Key_Escape)
            tryVerify(() => !sheet.visible)
            verify(list().activeFocus)
        }

        function test_groupsStandByTheirWeightAndItemsBelowThem() {
            compare(rows().filter(row => row.kind === ResultsModel.Group).map(row => row.name),
                    [S.categoryDerivedData, S.categoryUserCache, S.categoryLogs])
            verify(row("com.example.browser").y > row(S.categoryUserCache).y)
        }

        function test_arrowsMoveAndSpaceTicks() {
            keyClick(Qt.Key_Down)
            compare(list().currentItem.name, "Harbour-abcdef")
            compare(selected(), S.moduleSelectedCount(6))
            keyClick(Qt.Key_Space)
            tryVerify(() => selected() === S.moduleSelectedCount(5))
            verify(!list().currentItem.selected)
            keyClick(Qt.Key_Space)
            tryVerify(() => selected() === S.moduleSelectedCount(6))
        }

        function test_aHeldSpaceTicksOnce() {
            keyClick(Qt.Key_Down)
            stage.holdKey(Qt.Key_Space)
            compare(selected(), S.moduleSelectedCount(5))
            stage.holdKey(Qt.Key_Space)
            compare(selected(), S.moduleSelectedCount(6))
        }

        function test_spaceOnAGroupTicksAllOfItAndThenNone() {
            goTo(S.categoryLogs)
            compare(list().currentItem.checkState, Qt.PartiallyChecked)
            keyClick(Qt.Key_Space)
            tryCompare(list().currentItem, "checkState", Qt.Checked)
            keyClick(Qt.Key_Space)
            tryCompare(list().currentItem, "checkState", Qt.Unchecked)
        }

        function test_enterAndTheArrowsFoldAGroup() {
            goTo(S.categoryLogs)
            keyClick(Qt.Key_Return)
            tryVerify(() => row("install.log") === undefined)
            keyClick(Qt.Key_Right)
            tryVerify(() => row("install.log") !== undefined)
            keyClick(Qt.Key_Left)
            tryVerify(() => row("install.log") === undefined)
            keyClick(Qt.Key_Return)
            tryVerify(() => row("install.log") !== undefined)
        }

        function test_aFolderShowsFiftyOfWhatIsInIt() {
            goTo("com.example.browser")
            tryVerify(() => list().currentItem.expandable)
            keyClick(Qt.Key_Return)
            stage.settle()
            tryVerify(() => list().count > 50)
            keyClick(Qt.Key_End)
            list().positionViewAtIndex(row("entry-1") ? row("entry-1").index : 20, ListView.Beginning)
            tryVerify(() => {
                list().positionViewAtIndex(list().count - 15, ListView.Beginning)
                return row(S.moduleMoreItems(3)) !== undefined
            })
        }

        function test_anEmptyFolderSaysSo() {
            goTo("empty.folder")
            tryVerify(() => list().currentItem.expandable)
            keyClick(Qt.Key_Right)
            stage.settle()
            tryVerify(() => row(S.moduleEmptyFolder) !== undefined)
        }

        function test_whatBelongsToARunningAppIsMarkedAndUnticked() {
            const marked = row("com.example.music")
            verify(!marked.selected)
            tryCompare(marked, "runningWarning", S.moduleRunningAppHelp)
            compare(row("com.example.browser").runningWarning, "")
        }

        function test_aNameIsShownSafely() {
            const wild = rows().find(row => row.name.startsWith("a name"))
            verify(wild !== undefined)
            verify(!wild.name.includes("\n"))
            verify(!wild.name.includes("\u202E"))
        }

        function test_theSearchShowsWhatMatchesAndEscapeShowsAllAgain() {
            keyClick(Qt.Key_F, Qt.ControlModifier)
            for (const key of [Qt.Key_E, Qt.Key_D, Qt.Key_I, Qt.Key_T]) keyClick(key)
            stage.settle()
            tryVerify(() => row("com.example.browser") === undefined)
            verify(row("org.example.editor") !== undefined)
            verify(Find.says(view, S.countItems(8)))
            keyClick(Qt.Key_Down)
            verify(list().activeFocus)
            keyClick(Qt.Key_Escape)
            stage.settle()
            tryVerify(() => row("com.example.browser") !== undefined)
        }

        function test_aSearchThatMatchesNothingSaysSo() {
            keyClick(Qt.Key_F, Qt.ControlModifier)
            for (const key of [Qt.Key_Q, Qt.Key_Q, Qt.Key_Q]) keyClick(key)
            stage.settle()
            tryVerify(() => Find.says(view, S.windowNothingMatches))
            keyClick(Qt.Key_Escape)
            stage.settle()
        }

        function test_theKeyboardStaysOnItsItemInAnotherOrder() {
            goTo("org.example.editor")
            sortBy(1)
            tryVerify(() => row("empty.folder").y < row("org.example.editor").y)
            tryVerify(() => list().currentItem.name === "org.example.editor")
            sortBy(0)
        }

        function test_theKeyboardStaysOnItsItemInASearch() {
            goTo("org.example.editor")
            search([Qt.Key_E, Qt.Key_D, Qt.Key_I])
            tryVerify(() => row("com.example.browser") === undefined)
            keyClick(Qt.Key_Down)
            compare(list().currentItem.name, "org.example.editor")
            keyClick(Qt.Key_Space)
            tryVerify(() => !row("org.example.editor").selected)
            compare(selected(), S.moduleSelectedCount(5))
            keyClick(Qt.Key_Escape)
            stage.settle()
            tryVerify(() => row("com.example.browser") !== undefined)
            compare(list().currentItem.name, "org.example.editor")
            keyClick(Qt.Key_Space)
            tryVerify(() => row("org.example.editor").selected)
            compare(selected(), S.moduleSelectedCount(6))
        }

        function test_theKeyboardStaysOnItsItemInAnotherOrderOfASearch() {
            goTo("org.example.editor")
            search([Qt.Key_C, Qt.Key_A, Qt.Key_C, Qt.Key_H, Qt.Key_E])
            tryVerify(() => row("install.log") === undefined)
            sortBy(1)
            tryVerify(() => row("empty.folder").y < row("org.example.editor").y)
            compare(list().currentItem.name, "org.example.editor")
            keyClick(Qt.Key_Escape)
            stage.settle()
            sortBy(0)
        }

        function test_whereASearchHidesItsItemTheKeyboardIsOnTheFirstRowAndLaterBack() {
            goTo("install.log")
            search([Qt.Key_E, Qt.Key_D, Qt.Key_I])
            tryVerify(() => row("install.log") === undefined)
            keyClick(Qt.Key_Down)
            compare(list().currentIndex, 0)
            verify(list().currentItem !== null)
            keyClick(Qt.Key_Escape)
            stage.settle()
            tryVerify(() => row("install.log") !== undefined)
            compare(list().currentItem.name, "install.log")
        }

        function test_fromASearchTheKeyboardTakesAlongWhereItWent() {
            goTo("install.log")
            search([Qt.Key_E, Qt.Key_D, Qt.Key_I])
            tryVerify(() => row("install.log") === undefined)
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Down)
            const name = list().currentItem.name
            keyClick(Qt.Key_Escape)
            stage.settle()
            tryVerify(() => row("install.log") !== undefined)
            compare(list().currentItem.name, name)
        }

        function test_theMenuOfARowShowsItInTheFileManager() {
            goTo("org.example.editor")
            const over = row("org.example.editor")
            mouseClick(over, 300, 20, Qt.RightButton)
            tryVerify(() => Find.button(overlay(), S.actionShowInFinder) !== null)
            stage.forget()
            Find.button(overlay(), S.actionShowInFinder).clicked()
            compare(stage.asked(), ["show " + over.url])
            tryVerify(() => Find.button(overlay(), S.actionShowInFinder) === null)
        }

        function test_theKeyboardOpensTheMenuOfARow_data() {
            return [{ tag: "menu", key: Qt.Key_Menu, modifiers: Qt.NoModifier }, { tag: "shift+f10", key: Qt.Key_F10, modifiers: Qt.ShiftModifier }]
        }

        function test_theKeyboardOpensTheMenuOfARow(data) {
            goTo("install.log")
            const url = list().currentItem.url
            keyClick(data.key, data.modifiers)
            tryVerify(() => Find.button(overlay(), S.actionQuickLook) !== null)
            Find.button(overlay(), S.actionQuickLook).clicked()
            tryCompare(QuickLook, "url", url)
            QuickLook.close()
            tryVerify(() => Find.button(overlay(), S.actionQuickLook) === null)
        }

        function test_enterLooksAtAFile() {
            goTo("install.log")
            tryVerify(() => !list().currentItem.expandable)
            keyClick(Qt.Key_Return)
            compare(QuickLook.url, list().currentItem.url)
            QuickLook.close()
        }

        function test_enterLooksAtWhatLiesInAFolder() {
            goTo("com.example.browser")
            tryVerify(() => list().currentItem.expandable)
            keyClick(Qt.Key_Right)
            stage.settle()
            tryVerify(() => row("entry-0") !== undefined)
            keyClick(Qt.Key_Down)
            compare(list().currentItem.kind, ResultsModel.Child)
            keyClick(Qt.Key_Return)
            compare(QuickLook.url, row("entry-0").url)
            QuickLook.close()
        }

        function test_namesStandBelowOneAnotherWithAChevronOrWithout() {
            const placeOfName = row => Find.all(row, item => item.text === row.name)[0].mapToItem(view, 0, 0).x
            tryVerify(() => row("Editor").expandable)
            verify(!row("install.log").expandable)
            compare(placeOfName(row("install.log")), placeOfName(row("Editor")))
        }

        function test_screenReadersTickARowAndHearItsState() {
            const item = Find.all(row("com.example.browser"), item => item instanceof ItemRow)[0]
            compare(item.Accessible.role, Accessible.ListItem)
            compare(item.Accessible.name, "com.example.browser")
            verify(item.Accessible.checked)
            item.Accessible.pressAction()
            tryVerify(() => !item.Accessible.checked)
        }

        function test_screenReadersHearAndTurnAGroupsStateAndFold() {
            const header = Find.all(row(S.categoryLogs), item => item instanceof GroupHeader)[0]
            verify(header.Accessible.checkable && header.Accessible.checkStateMixed && !header.Accessible.checked)
            compare(header.Accessible.description, "51 MB · " + S.windowHideContents)
            header.Accessible.toggleAction()
            tryVerify(() => header.Accessible.checked && !header.Accessible.checkStateMixed)
            header.Accessible.pressAction()
            tryCompare(header.Accessible, "description", "51 MB · " + S.windowShowContents)
            header.Accessible.pressAction()
            tryVerify(() => row("install.log") !== undefined)
        }

        function test_screenReadersHearAllThatARowShows() {
            const marked = row("com.example.music")
            tryCompare(marked, "runningWarning", S.moduleRunningAppHelp)
            const heard = Find.all(marked, item => item instanceof ItemRow)[0].Accessible.description
            compare(heard, "Caches · " + S.moduleRunningAppHelp + " · 304 MB")
        }

        function test_screenReadersHearBadgeAndDateOfARow_data() {
            return [
                { tag: "nothing", mailBadge: "", detail: "", date: "", heard: "14 MB" },
                { tag: "mail", mailBadge: "Re-downloads", detail: "", date: "", heard: "Re-downloads · 14 MB" },
                { tag: "dated", mailBadge: "", detail: "PDF", date: "14 Mar 2026", heard: "PDF · 14 Mar 2026 · 14 MB" }]
        }

        function test_screenReadersHearBadgeAndDateOfARow(data) {
            const made = createTemporaryObject(itemRow, page, { mailBadge: data.mailBadge, detail: data.detail, date: data.date, runningHelp: "" })
            compare(made.Accessible.description, data.heard)
            for (const mark of Find.all(made, item => item instanceof MailBadge || item instanceof DateMark)) {
                compare(mark.Accessible.role, Accessible.StaticText)
                verify(data.heard.includes(mark.Accessible.name) && mark.Accessible.name.length > 0)
            }
        }

        function test_whereAFileLiesIsToldSafely() {
            const wild = rows().find(row => row.name.startsWith("a name"))
            const place = Files.placeOf(wild.url)
            verify(place.startsWith("/") && place.includes("/found/Caches/"), place)
            verify(!place.includes("\n"))
            compare(Files.placeOf("no address"), "")
        }

        function test_aHundredThousandRowsAreTickedAtOnce() {
            scan("many")
            keyClick(Qt.Key_A, Qt.ControlModifier)
            tryVerify(() => selected() === S.moduleSelectedCount(100000))
            keyClick(Qt.Key_End)
            compare(list().currentIndex, list().count - 1)
            tryVerify(() => list().currentItem !== null)
        }
    }
}
