import QtQuick
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words
import "Find.js" as Find

// The window in one state after another: what the golden pictures of the screens show.
Item {
    id: root

    readonly property var shots: [
        "consent", "notBuilt", "history", "clearing", "noHistory", "menu", "idle", "scanning", "empty", "results", "contents", "search", "noMatch", "question",
        "cleaning", "done", "failures", "failed", "access", "blocked", "dates", "mail", "gallery", "languages",
        "focus", "large"
    ]
    // Large pictures weigh on the repository: at other scales a full screen is enough, and most stand on a plain ground.
    readonly property var scaledShots: ["results"]
    readonly property var shotsOnTheGround: ["consent", "results"]
    // The sidebar is the same beside every screen.
    readonly property var wholeShots: ["consent", "results", "notBuilt", "menu", "question", "large"]
    /// Where what matters of the present state begins.
    property int leftEdge: 0
    property bool ready: false
    property var condition: () => true
    // Found once: what is hidden isn't found again.
    property Item hiddenGround

    width: 940
    height: 620

    function content() {
        return shownContent
    }

    function button(name) {
        return Find.button(root.Window.window.contentItem, name)
    }

    function rows() {
        return Find.all(root, item => item instanceof ResultsRow)
    }

    function open(key) {
        content().selection = "smartScan"
        content().selection = key
    }

    function scan(key, how) {
        stage.scansGo(how)
        open(key)
        button(S.actionScan).clicked()
        stage.settle()
    }

    function list() {
        return Find.all(root, item => item.Accessible.name === S.windowResults)[0]
    }

    // What each state needs, and how it is known to stand.
    readonly property var states_: ({
        consent: () => { condition = () => Find.says(root, S.consentTitle) },
        notBuilt: () => { App.consent.accept(); condition = () => Find.says(root, S.windowNotBuiltYet) },
        idle: () => { button(S.windowMenu).clicked(); open("systemJunk"); condition = () => button(S.actionScan) !== null },
        scanning: () => {
            stage.hold()
            button(S.actionScan).clicked()
            condition = () => Find.says(root, S.moduleItemsFound(12))
        },
        empty: () => {
            stage.letGo()
            stage.settle()
            scan("loginItems", "empty")
            condition = () => Find.says(root, S.moduleNothingToClean)
        },
        results: () => {
            App.consent.accept()
            stage.appsRun("com.example.music")
            // As narrow as it gets beside the sidebar.
            Find.all(root, item => item instanceof SidebarHandle)[0].wished = 380
            scan("systemJunk", "findings")
            condition = () => rows().some(row => row.runningWarning.length > 0)
        },
        contents: () => {
            const row = rows().find(row => row.name === "com.example.browser")
            row.expandToggled()
            stage.settle()
            condition = () => rows().some(row => row.name.startsWith("entry"))
        },
        search: () => {
            rows().find(row => row.name === "com.example.browser").expandToggled()
            Find.all(root, item => item instanceof SearchField)[0].text = "edit"
            condition = () => !rows().some(row => row.name === "com.example.browser")
        },
        noMatch: () => {
            Find.all(root, item => item instanceof SearchField)[0].text = "xyz"
            condition = () => Find.says(root, S.windowNothingMatches)
        },
        question: () => {
            Find.all(root, item => item instanceof SearchField)[0].text = ""
            button(S.actionClean).clicked()
            condition = () => button(S.moduleConfirmAction) !== null
        },
        cleaning: () => {
            stage.hold()
            button(S.moduleConfirmAction).clicked()
            condition = () => button(S.actionStop) !== null && Find.says(root, "com.example.browser")
        },
        done: () => {
            stage.letGo()
            stage.settle()
            condition = () => button(S.actionScan) !== null
        },
        failures: () => {
            stage.cleansGo("partly")
            scan("systemJunk", "findings")
            button(S.actionClean).clicked()
            stage.settle()
            button(S.moduleConfirmAction).clicked()
            stage.settle()
            condition = () => Find.says(root, S.cleanFailuresTitle(3))
        },
        failed: () => { scan("browserCaches", "broken"); condition = () => Find.says(root, S.moduleError("the disk went away")) },
        access: () => { scan("mailAttachments", "denied"); condition = () => Find.says(root, S.fdaTitle) },
        blocked: () => { scan("duplicates", "blocked"); condition = () => Find.says(root, S.moduleScanPartial(2)) },
        dates: () => { scan("screenshots", "findings"); condition = () => rows().some(row => row.dateText.length > 0) && thumbnails(4) },
        mail: () => { scan("mailAttachments", "findings"); condition = () => rows().some(row => row.mailBadge.length > 0) },
        gallery: () => {
            scan("similarImages", "findings")
            const cell = Find.all(root, item => item instanceof ImageCell)[2]
            cell.toggled()
            condition = () => cell.ticked && thumbnails(8)
        },
        languages: () => { scan("appLanguages", "findings"); condition = () => Find.says(root, S.actionRemove) },
        history: () => { open("history"); condition = () => Find.all(root, item => item instanceof HistoryRow).length === 3 },
        clearing: () => { button(S.historyClearLog).clicked(); condition = () => button(S.actionCancel) !== null },
        noHistory: () => {
            const clear = Find.all(root.Window.window.contentItem, item => item instanceof DangerButton)[0]
            clear.clicked()
            condition = () => Find.says(root, S.historyEmptyTitle)
        },
        menu: () => {
            button(S.windowMenu).clicked()
            condition = () => button(S.updatesCheck) !== null
        },
        focus: () => {
            scan("systemJunk", "findings")
            list().forceActiveFocus(Qt.TabFocusReason)
            list().currentIndex = 3
            condition = () => rows().some(row => row.current)
        },
        large: () => {
            root.width = 2560
            root.height = 1440
            condition = () => Find.all(root, item => item instanceof ReadableColumn).every(column => column.columnWidth <= Theme.readableWidth)
                              && rows().length > 10
        }
    })

    function thumbnails(count) {
        return Find.all(root, item => item instanceof RowIcon && item.showsThumbnail).length >= count
    }

    function show(shot) {
        const ground = Find.all(root, item => item instanceof BrandBackground)[0] ?? hiddenGround
        hiddenGround = ground
        ground.visible = shotsOnTheGround.includes(shot)
        leftEdge = wholeShots.includes(shot) ? 0 : 264
        states_[shot]()
        waiting.start()
    }

    Component.onCompleted: Theme.reducedMotion = true

    Timer {
        id: waiting

        interval: 20
        repeat: true
        onTriggered: if (root.condition()) {
            stop()
            root.ready = true
        }
    }
    Rectangle {
        anchors.fill: parent
        color: Brand.deepest
    }
    Item {
        id: window

        anchors.fill: parent

        BrandBackground { anchors.fill: parent }
        ContentView {
            id: shownContent

            anchors.fill: parent
        }
    }
}
