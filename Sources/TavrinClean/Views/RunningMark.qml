import QtQuick
import Tavrin.Theme
import Tavrin.Words

/**
 * A warning that the app of a finding runs.
 *
 * RunningMark { help: S.moduleRunningAppHelp; pointedAt: row.current }
 */
Symbol {
    id: root

    required property string help
    /// The keyboard is on the row, so the help is wanted as if the mouse were here.
    property bool pointedAt: false

    key: "exclamationmark.triangle.fill"
    size: 15
    color: Brand.gold

    Accessible.role: Accessible.StaticText
    Accessible.name: S.windowAppIsOpen
    Accessible.description: help

    HoverHandler { id: hover }
    HelpTip { wanted: hover.hovered || root.pointedAt; text: root.help }
}
