import QtQuick
import Tavrin.Theme

/**
 * The one thing that a screen wants to be done.
 *
 * GoldButton { text: S.actionScan; symbol: "magnifyingglass"; onClicked: model.startScan() }
 */
BrandButton {
    tint: Brand.onGold
    plateColor: Brand.goldHi
    plateEndColor: Brand.gold
    glowColor: Brand.gold
    glowStrength: 0.35
    pressedOpacity: 0.82
    pressedScale: 0.98
}
