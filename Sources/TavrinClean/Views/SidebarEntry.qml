import QtQuick
import Tavrin.Theme

/**
 * One screen's row in the sidebar.
 *
 * SidebarEntry { key: row.key; title: row.title; symbol: row.symbol; selected: is; isStop: is; onChosen: go(key) }
 */
SidebarRow {
    id: root

    required property string key
    /// The Tab key comes to this row: one for the whole list.
    required property bool isStop

    signal chosen()
    signal deselected()
    signal entered()

    symbolTint: Brand.lavender
    focusPolicy: isStop || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    focus: isStop

    Keys.onReturnPressed: selected ? entered() : chosen()
    Keys.onEnterPressed: selected ? entered() : chosen()
    onClicked: chosen()

    TapHandler {
        acceptedModifiers: Qt.ControlModifier
        onTapped: root.selected ? root.deselected() : root.chosen()
    }
}
