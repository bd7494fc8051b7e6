pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Words

/**
 * What was cleaned, and the way back.
 *
 * HistoryView {}
 */
FocusScope {
    id: root

    function enter() {}

    Accessible.role: Accessible.Pane
    Accessible.name: S.navHistory

    HistoryScreenModel {
        id: flow

        history: App.history
    }

    ScreenHeader {
        id: header

        width: parent.width
        symbol: "clock.arrow.circlepath"
        title: S.historyTitle
        subtitle: flow.totalText
        note: flow.message

        GhostButton {
            visible: !flow.isEmpty
            text: S.historyClearLog
            onClicked: flow.askToClear()
        }
    }
    Divider {
        id: line

        anchors { left: parent.left; right: parent.right; top: header.bottom }
    }
    Placeholder {
        anchors { centerIn: list }
        visible: flow.isEmpty
        symbol: "clock.arrow.circlepath"
        title: S.historyEmptyTitle
        subtitle: S.historyEmptySubtitle
    }
    ListView {
        id: list

        anchors { left: parent.left; right: parent.right; top: line.bottom; bottom: parent.bottom }
        focus: true
        activeFocusOnTab: count > 0
        clip: true
        topMargin: Theme.spacing
        bottomMargin: Theme.spacing
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        model: flow.records
        T.ScrollBar.vertical: BrandScrollBar {}

        Accessible.role: Accessible.List
        Accessible.name: S.historyTitle

        delegate: HistoryRow {
            required property int index
            required property string recordId

            width: ListView.view.width
            focus: ListView.isCurrentItem
            current: ListView.isCurrentItem && list.activeFocus
            onPutBack: flow.putBack(recordId)
            onPressed: {
                list.currentIndex = index
                list.forceActiveFocus(Qt.MouseFocusReason)
            }
        }
    }
    BrandConfirm {
        presented: flow.confirmingClear
        title: S.historyClearConfirmTitle
        message: flow.clearMessage
        cancelTitle: S.actionCancel
        confirmTitle: S.historyClearLog
        onDismissed: flow.dismissClear()
        onConfirmed: flow.clear()
    }
}
