import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme

// The components in it are its own, and see its ids; a loader of this release can't make them where that is declared.
// qmllint disable unqualified

/**
 * A symbol that can be pressed, for rows and fields. It has no text on screen, so it must be given a name.
 *
 * IconButton { symbol: "eye"; name: S.actionQuickLook; onClicked: QuickLook.show(url) }
 */
T.Button {
    id: root

    required property string symbol
    /// What screen readers say.
    required property string name
    /// What the tool tip says; none while it is empty.
    property string tip: name
    property color tint: Brand.muted
    property real size: 16

    implicitWidth: Math.max(28, size + 12)
    implicitHeight: implicitWidth
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.onPressAction: if (enabled) clicked()

    background: Rectangle {
        radius: Theme.radiusRow
        color: Brand.white(root.down ? 0.16 : root.hovered ? 0.1 : 0)
        FocusRing { shown: root.visualFocus; gap: 0 }
    }
    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            key: root.symbol
            size: root.size
            color: root.hovered ? Brand.ink : root.tint
        }
    }
    // Made only for what is pointed at: lists hold hundreds of these.
    Loader {
        anchors.fill: parent
        active: (root.hovered || root.visualFocus) && root.tip.length > 0
        sourceComponent: Component { HelpTip { wanted: !root.down; text: root.tip } }
    }
}
