import QtQuick
import Tavrin.Theme

/**
 * What takes something away. Never the default of a sheet.
 *
 * DangerButton { text: S.moduleConfirmAction; onClicked: model.clean() }
 */
BrandButton {
    tint: Brand.onDanger
    plateColor: Brand.danger
    plateEndColor: Brand.dangerDeep
    glowColor: Brand.danger
    glowStrength: 0.4
    hoverVeil: Brand.black(0.12)
    pressedOpacity: 0.82
    pressedScale: 0.98
}
