import QtQuick
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Words

// The components in it are its own, and see its ids; a loader of this release can't make them where that is declared.
// qmllint disable unqualified

/**
 * The screen of a module, the same for all of them: it shows the phase of its flow.
 *
 * ModuleDetailView { moduleKey: "systemJunk" }
 */
FocusScope {
    id: root

    required property string moduleKey

    readonly property ResultsPage resultsPage: content.item as ResultsPage

    /// Goes to what the screen is there for: the scan, or what it found.
    function enter() {
        if (flow.phase === ModuleScreenModel.Idle) flow.startScan()
    }

    Accessible.role: Accessible.Pane
    Accessible.name: flow.title

    ModuleScreenModel {
        id: flow

        store: App.store
        moduleKey: root.moduleKey
    }

    Shortcut {
        sequences: [StandardKey.SelectAll]
        enabled: flow.showsFooter && !flow.confirming
        onActivated: flow.selectAll()
    }
    Shortcut {
        sequences: [StandardKey.Find]
        enabled: root.resultsPage?.searchable ?? false
        onActivated: root.resultsPage.focusSearch()
    }

    ScreenHeader {
        id: header

        width: parent.width
        symbol: flow.symbol
        title: flow.title
        subtitle: flow.subtitle

        GhostButton {
            symbol: flow.busy ? "stop.fill" : "magnifyingglass"
            text: flow.busy ? S.actionStop : S.actionScan
            onClicked: flow.busy ? flow.stop() : flow.startScan()
        }
    }
    Divider {
        id: line

        anchors { left: parent.left; right: parent.right; top: header.bottom }
    }
    ReadableColumn {
        id: banners

        anchors { left: parent.left; right: parent.right; top: line.bottom }
        height: notes.implicitHeight

        Column {
            id: notes

            width: parent.width
            spacing: Theme.spacingSmall
            topPadding: flow.warning.length > 0 || flow.note.length > 0 ? Theme.spacing : 0

            Banner {
                width: parent.width
                visible: flow.warning.length > 0
                warning: true
                symbol: "exclamationmark.triangle.fill"
                text: flow.warning
            }
            Banner {
                width: parent.width
                visible: flow.note.length > 0
                symbol: "info.circle.fill"
                text: flow.note
            }
        }
    }
    Loader {
        id: content

        anchors { left: parent.left; right: parent.right; top: banners.bottom; bottom: footer.top }
        focus: true
        sourceComponent: pages[flow.phase]

        readonly property list<Component> pages: [idle, busy, results, busy, done, failed, access]

        Component {
            id: idle

            IdlePage {
                focus: true
                symbol: flow.symbol
                title: flow.title
                subtitle: flow.subtitle
                onScan: flow.startScan()
            }
        }
        Component {
            id: busy

            ScanningPage {
                phase: flow.progressText
                path: flow.progressPath
                fraction: flow.fraction
                found: flow.progressFound
            }
        }
        Component {
            id: results

            ResultsPage {
                focus: true
                screen: flow
            }
        }
        Component {
            id: done

            DonePage {
                focus: true
                summary: flow.doneSummary
                withFailures: flow.doneWithFailures
                reclaimed: flow.doneReclaimed
                failuresTitle: flow.failuresTitle
                failures: flow.failures
            }
        }
        Component {
            id: failed

            Item {
                Placeholder {
                    anchors.centerIn: parent
                    symbol: "exclamationmark.triangle.fill"
                    tint: Brand.softWarning
                    title: flow.errorText
                }
            }
        }
        Component {
            id: access

            AccessPage {
                focus: true
                body: S.fdaMailBody
                onOpenSettings: flow.openAccessSettings()
                onScanAgain: flow.startScan()
            }
        }
    }
    ResultsFooter {
        id: footer

        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        visible: flow.showsFooter
        height: visible ? implicitHeight : 0
        selectedCountText: flow.selectedCountText
        selectedSizeText: flow.selectedSizeText
        canClean: flow.canClean
        onSelectAll: flow.selectAll()
        onSelectNone: flow.selectNone()
        onClean: flow.askToClean()
    }
    BrandConfirm {
        presented: flow.confirming
        title: S.moduleConfirmTitle
        message: flow.confirmMessage
        cancelTitle: S.actionCancel
        confirmTitle: S.moduleConfirmAction
        onDismissed: flow.dismissClean()
        onConfirmed: flow.clean()
    }
}
