import QtQuick
import Tavrin.Theme

/**
 * The ring around what has the keyboard. It stands outside its parent, so nothing moves when it comes.
 *
 * FocusRing { shown: control.visualFocus; around: background.radius }
 */
Rectangle {
    id: root

    required property bool shown
    /// The radius of what it goes around.
    property real around: Theme.radiusRow
    property int gap: 3

    anchors.fill: parent
    anchors.margins: -gap
    radius: around + gap
    visible: shown
    color: Brand.clear
    border.width: 2
    border.color: Brand.goldHi
}
