import QtQuick
import Tavrin.Theme

/**
 * A line between two parts of a screen.
 *
 * Divider { anchors { left: parent.left; right: parent.right; top: header.bottom } }
 */
Rectangle {
    implicitHeight: 1
    color: Brand.white(0.1)
}
