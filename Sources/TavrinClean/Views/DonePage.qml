pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Words

/**
 * What a clean did, and what it couldn't do.
 *
 * DonePage { summary: screen.doneSummary; withFailures: true; reclaimed: true; failuresTitle: ...; failures: screen.failures }
 */
FocusScope {
    id: root

    required property string summary
    required property bool withFailures
    /// With failures: something went all the same.
    required property bool reclaimed
    required property string failuresTitle
    required property FailuresModel failures

    Placeholder {
        anchors.centerIn: parent
        visible: !root.withFailures
        symbol: "checkmark.circle.fill"
        title: root.summary
    }
    Item {
        anchors { fill: parent; topMargin: Theme.spacingHuge; bottomMargin: Theme.spacingLarge }
        visible: root.withFailures

        Column {
            id: head

            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(560, parent.width - 2 * Theme.margin)
            spacing: Theme.spacing

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                key: root.reclaimed ? "exclamationmark.circle.fill" : "exclamationmark.triangle.fill"
                size: 46
                opacity: root.reclaimed ? 0.9 : 1
                color: root.reclaimed ? Brand.gold : Brand.softWarning
            }
            BrandText {
                width: parent.width
                visible: text.length > 0
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: root.summary
                color: Brand.lavender
            }
            BrandText {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: root.failuresTitle
                font: Theme.title3
            }
        }
        BrandCard {
            anchors { top: head.bottom; topMargin: Theme.spacingLarge; horizontalCenter: parent.horizontalCenter }
            width: Math.min(720, parent.width - 2 * Theme.margin)
            height: Math.min(list.contentHeight + 2 * list.anchors.margins, parent.height - head.height - Theme.spacingLarge)

            ListView {
                id: list

                anchors { fill: parent; margins: 6 }
                clip: true
                focus: root.withFailures
                activeFocusOnTab: true
                boundsBehavior: Flickable.StopAtBounds
                highlightMoveDuration: 0
                highlightResizeDuration: 0
                model: root.failures
                delegate: FailureRow {
                    required property int index

                    width: ListView.view.width
                    focus: ListView.isCurrentItem
                    current: ListView.isCurrentItem && list.activeFocus
                    onPressed: {
                        list.currentIndex = index
                        list.forceActiveFocus(Qt.MouseFocusReason)
                    }
                }
                T.ScrollBar.vertical: BrandScrollBar {}

                Accessible.role: Accessible.List
                Accessible.name: S.windowFailures
            }
        }
    }
}
