import QtQuick
import Tavrin.Theme
import Tavrin.Words

// Every component of the look on one page, in phases: what the golden pictures show.
Item {
    id: gallery

    required property string fixtures
    property string phase: "controls"
    /// What the preview shows in a phase: a text, a picture smaller than the sheet, and a file that can't be shown.
    readonly property var previews: ({ preview: "notes.txt", picture: "picture.png", withoutPreview: "gone.dmg" })
    readonly property bool ready: phase === "preview" ? QuickLook.isText
                                : phase === "picture" ? sheet.showsPicture && QuickLook.summary.length > 0
                                : phase === "lists" ? thumbnail.showsThumbnail : true
    /// One of each kind of control: what the mouse goes over in turn.
    readonly property list<Item> mouseTargets: [scanButton, ghost, danger, look, switchOn, switchOff, picker, ticked, empty, link]

    function showPhase() {
        if (phase === "focus")
            ghost.forceActiveFocus(Qt.TabFocusReason)
        else
            gallery.forceActiveFocus()
        if (previews[phase] !== undefined)
            QuickLook.show(fixtures + previews[phase])
        else
            QuickLook.close()
    }

    width: 940
    height: 620

    Component.onCompleted: Theme.reducedMotion = true
    onPhaseChanged: showPhase()

    BrandBackground { anchors.fill: parent }

    Column {
        x: Theme.margin
        y: Theme.margin
        width: 420
        spacing: Theme.spacingLarge
        enabled: gallery.phase !== "disabled"
        visible: gallery.phase !== "lists" && gallery.phase !== "gem"

        Row {
            spacing: Theme.spacing

            IconChip { symbol: "trash"; size: 44 }
            Column {
                anchors.verticalCenter: parent.verticalCenter
                spacing: 2

                BrandText { text: S.moduleSystemJunkTitle; font: Theme.title2 }
                BrandText { text: S.moduleSystemJunkSubtitle; font: Theme.caption; color: Brand.muted }
            }
        }
        Divider { width: parent.width }
        Row {
            spacing: Theme.spacing

            GoldButton { id: scanButton; text: S.actionScan; symbol: "magnifyingglass" }
            GhostButton { id: ghost; text: S.actionSelectAll }
            DangerButton { id: danger; text: S.moduleConfirmAction; symbol: "trash" }
        }
        Row {
            spacing: Theme.spacing

            GoldButton { large: true; text: S.smartScanButton; symbol: "sparkles" }
            IconButton { id: look; anchors.verticalCenter: parent.verticalCenter; symbol: "eye"; name: S.actionQuickLook }
            BrandSwitch { id: switchOn; anchors.verticalCenter: parent.verticalCenter; name: S.sectionCleanup; on: true }
            BrandSwitch { id: switchOff; anchors.verticalCenter: parent.verticalCenter; name: S.sectionSpace }
        }
        Row {
            spacing: Theme.spacing

            SearchField { placeholder: S.searchPlaceholder; clearName: S.windowClearSearch }
            MenuPicker { id: picker; label: S.moduleSortBy; model: [S.categoryLogs, S.categoryTrash] }
        }
        SearchField { placeholder: S.searchPlaceholder; clearName: S.windowClearSearch; text: "node_modules" }
        Row {
            spacing: Theme.spacing

            CheckMark { id: ticked; text: S.categoryLogs; checkState: Qt.Checked }
            CheckMark { text: S.categoryTrash; checkState: Qt.PartiallyChecked }
            CheckMark { id: empty; text: S.categoryDownloads }
            LinkText { id: link; text: S.consentReadPrivacy }
        }
        CheckMark { width: 380; text: S.consentAgreeToggle }
        ProgressLine { width: parent.width; name: S.categoryLogs; value: 0.4 }
        ProgressLine { width: parent.width; name: S.categoryLogs; indeterminate: true }
        Banner { width: parent.width; symbol: "info.circle.fill"; text: S.moduleNoteYourFiles }
        Banner { width: parent.width; warning: true; symbol: "exclamationmark.triangle.fill"; text: S.moduleScanPartial(2) }
    }

    Column {
        x: 484
        y: Theme.margin
        width: 432
        spacing: Theme.spacingLarge
        enabled: gallery.phase !== "disabled"
        visible: gallery.phase !== "lists" && gallery.phase !== "gem"

        BrandCard {
            width: parent.width
            height: 84

            CardContent { symbol: "doc.on.doc"; title: S.moduleDuplicatesTitle; subtitle: S.moduleDuplicatesSubtitle }
        }
        BrandCard {
            width: parent.width
            height: 84
            highlighted: true

            CardContent { symbol: "sparkles"; gold: true; title: S.navSmartScan; subtitle: S.smartReadyToFree }
        }
        Row {
            spacing: Theme.spacing

            Capsule { text: "1.2 GB" }
            Capsule { text: S.moduleMailRedownloads; symbol: "arrow.down.circle"; tint: Brand.safe }
            Capsule { text: S.actionRemove; tint: Brand.softWarning }
        }
        Item {
            width: parent.width
            height: 180

            Placeholder {
                anchors.centerIn: parent
                symbol: "checkmark.seal.fill"
                tint: Brand.goldHi
                tintEnd: Brand.gold
                title: S.smartDoneTitle
                subtitle: S.smartDoneSummary("1.2 GB", 34)
            }
        }
        BrandText { text: S.appName; font: Theme.largeTitle }
        BrandText { text: S.appName; font: Theme.title }
        BrandText { text: S.appName; font: Theme.title3; color: Brand.gold }
        BrandText { text: S.appName; color: Brand.lavender }
    }

    Rectangle {
        width: 264
        height: parent.height
        visible: gallery.phase === "lists"
        color: Brand.black(0.18)

        Column {
            x: 10
            y: Theme.spacingLarge
            width: parent.width - 20
            spacing: 2

            Row {
                spacing: 10
                bottomPadding: Theme.spacing
                leftPadding: 4

                GemLogo { width: 40; height: 40; animate: false }
                BrandText { anchors.verticalCenter: parent.verticalCenter; text: S.appName; font: Theme.title3 }
            }
            SidebarRow { width: parent.width; symbol: "sparkles"; title: S.navSmartScan; emphasised: true; selected: true }
            SidebarRow { width: parent.width; symbol: "square.grid.2x2"; title: S.navDashboard; symbolTint: Brand.lavender }
            SidebarRow { width: parent.width; symbol: "bolt.fill"; title: S.navPerformance; symbolTint: Brand.lavender }
            SidebarRow { width: parent.width; symbol: "clock.arrow.circlepath"; title: S.navHistory; symbolTint: Brand.lavender }
            SectionTitle { text: S.sectionCleanup; topPadding: Theme.spacing; bottomPadding: 6; leftPadding: 10 }
            SidebarRow { width: parent.width; symbol: "trash"; title: S.moduleSystemJunkTitle; subtitle: S.moduleSystemJunkSubtitle; figure: "1.2 GB" }
            SidebarRow { width: parent.width; symbol: "xmark.bin"; title: S.moduleUninstallerTitle; subtitle: S.moduleUninstallerSubtitle }
            SidebarRow { width: parent.width; symbol: "app.badge"; title: S.moduleUnusedAppsTitle; subtitle: S.moduleUnusedAppsSubtitle; figure: "340 MB" }
            SidebarRow { width: parent.width; symbol: "trash.slash"; title: S.navEmptyTrash }
        }
    }
    Grid {
        x: 290
        y: Theme.margin
        visible: gallery.phase === "lists"
        columns: 11
        spacing: 14

        Repeater {
            model: FileImages.symbols

            Rectangle {
                id: cell

                required property string modelData

                width: 42
                height: 42
                radius: Theme.radiusRow
                color: Brand.white(0.06)

                Symbol { anchors.centerIn: parent; key: cell.modelData; size: 24; color: Brand.gold }
            }
        }
        RowIcon { id: thumbnail; url: gallery.fixtures + "picture.png"; preferThumbnail: true; size: 42 }
        RowIcon { url: gallery.fixtures + "folder/"; size: 42 }
        RowIcon { url: gallery.fixtures + "notes.txt"; size: 42 }
    }

    Row {
        anchors.centerIn: parent
        spacing: 60
        visible: gallery.phase === "gem"

        GemLogo { width: 240; height: 240; animate: false }
        Repeater {
            model: [0.15, 0.45, 0.8]

            GemPainting {
                required property real modelData

                anchors.verticalCenter: parent ? parent.verticalCenter : undefined
                width: 110
                height: 110
                elapsed: modelData
            }
        }
    }

    BrandConfirm {
        presented: gallery.phase === "confirm"
        title: S.moduleConfirmTitle
        message: S.moduleConfirmMove(34, "1.2 GB")
        cancelTitle: S.actionCancel
        confirmTitle: S.moduleConfirmAction
    }
    QuickLookSheet { id: sheet; title: S.actionQuickLook; closeName: S.windowClose; created: S.windowCreated; modified: S.windowModified }

    component CardContent: Row {
        id: card

        required property string symbol
        required property string title
        required property string subtitle
        property bool gold: false

        anchors { left: parent ? parent.left : undefined; leftMargin: Theme.spacingLarge; verticalCenter: parent ? parent.verticalCenter : undefined }
        spacing: Theme.spacing

        IconChip { symbol: card.symbol; size: 52; gold: card.gold }
        Column {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 3

            BrandText { text: card.title; font: Theme.headline }
            BrandText { text: card.subtitle; font: Theme.caption; color: Brand.muted }
        }
    }
}
