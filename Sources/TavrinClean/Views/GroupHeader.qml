import QtQuick
import Tavrin.Theme
import Tavrin.Words

/**
 * The head of a group of findings: tick all of it, see what it weighs, fold it away.
 *
 * GroupHeader { title: row.title; sizeText: row.size; checkState: row.state; folded: row.collapsed }
 */
Item {
    id: root

    required property string title
    required property string sizeText
    required property int checkState
    required property bool folded
    /// The keyboard is on this row.
    property bool current: false

    signal ticked()
    signal foldToggled()
    signal pressed()

    implicitHeight: 44

    Accessible.role: Accessible.Heading
    Accessible.name: title
    Accessible.description: sizeText + " · " + (folded ? S.windowShowContents : S.windowHideContents)
    Accessible.checkable: true
    Accessible.checked: checkState === Qt.Checked
    Accessible.checkStateMixed: checkState === Qt.PartiallyChecked
    Accessible.onPressAction: foldToggled()
    Accessible.onToggleAction: ticked()

    Rectangle {
        anchors.fill: parent
        radius: Theme.radiusRow
        color: Brand.white(hover.hovered ? 0.05 : 0)
        FocusRing { shown: root.current && root.activeFocus; gap: -1 }
    }
    HoverHandler { id: hover }
    TapHandler {
        onPressedChanged: if (pressed) root.pressed()
        onTapped: root.foldToggled()
    }

    CheckMark {
        id: mark

        x: 6
        anchors.verticalCenter: parent.verticalCenter
        focusPolicy: Qt.NoFocus
        name: root.title
        checkState: root.checkState
        Accessible.description: S.moduleGroupToggleHelp
        onTicked: root.ticked()

        HelpTip { wanted: mark.hovered; text: S.moduleGroupToggleHelp }
    }
    IconButton {
        id: chevron

        anchors { left: mark.right; verticalCenter: parent.verticalCenter }
        implicitWidth: 24
        focusPolicy: Qt.NoFocus
        symbol: root.folded ? "chevron.right" : "chevron.down"
        name: root.folded ? S.windowShowContents : S.windowHideContents
        size: 14
        onClicked: root.foldToggled()
    }
    Text {
        anchors { left: chevron.right; leftMargin: 6; right: size.left; rightMargin: Theme.spacing; verticalCenter: parent.verticalCenter }
        text: root.title
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        maximumLineCount: 1
        font: Theme.headline
        color: Brand.ink
    }
    Text {
        id: size

        anchors { right: parent.right; rightMargin: 14; verticalCenter: parent.verticalCenter }
        text: root.sizeText
        textFormat: Text.PlainText
        font: Theme.bodySemibold
        color: Brand.gold
    }
}
