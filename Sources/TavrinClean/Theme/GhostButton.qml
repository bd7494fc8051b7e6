import QtQuick
import Tavrin.Theme

/**
 * Every other thing that can be done.
 *
 * GhostButton { text: S.actionSelectAll; onClicked: model.selectAll() }
 */
BrandButton {
    plateColor: Brand.white(down ? 0.12 : 0.06)
    strokeColor: Brand.white(0.18)
    pressedOpacity: 0.85
}
