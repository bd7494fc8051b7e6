import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme

// The ids are wanted at once: nothing puts another item in the place of these.
// qmllint disable deferred-property-id

/**
 * Where one is in a list, and a handle to go elsewhere. Hidden where all of it is in view.
 *
 * ListView { T.ScrollBar.vertical: BrandScrollBar {} }
 */
T.ScrollBar {
    id: root

    implicitWidth: 12
    padding: 3
    minimumSize: 0.06
    visible: size < 1 && policy !== T.ScrollBar.AlwaysOff

    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 6
        radius: width / 2
        color: Brand.white(root.pressed ? 0.4 : root.hovered ? 0.3 : 0.16)
    }
}
