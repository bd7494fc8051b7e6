pragma Singleton
import QtQuick

/**
 * Sizes, type and motion of the look. Colours are in Brand.
 *
 * Text { font: Theme.body; color: Brand.ink }
 */
QtObject {
    /// Whether the person asked the desktop for less motion. The application sets it; nothing moves while it is true.
    property bool reducedMotion: false

    readonly property string family: "Inter"
    readonly property font largeTitle: Qt.font({ family: family, pixelSize: 30, weight: Font.Bold })
    readonly property font title: Qt.font({ family: family, pixelSize: 24, weight: Font.Bold })
    readonly property font title2: Qt.font({ family: family, pixelSize: 20, weight: Font.Bold })
    readonly property font title3: Qt.font({ family: family, pixelSize: 17, weight: Font.Bold })
    readonly property font headline: Qt.font({ family: family, pixelSize: 14, weight: Font.DemiBold })
    readonly property font body: Qt.font({ family: family, pixelSize: 14, weight: Font.Normal })
    readonly property font bodySemibold: Qt.font({ family: family, pixelSize: 14, weight: Font.DemiBold })
    readonly property font caption: Qt.font({ family: family, pixelSize: 12, weight: Font.Normal })
    readonly property font captionSemibold: Qt.font({ family: family, pixelSize: 12, weight: Font.DemiBold })
    readonly property font caption2: Qt.font({ family: family, pixelSize: 11, weight: Font.Normal })
    /// Section titles, in capitals.
    readonly property font overline: Qt.font({ family: family, pixelSize: 11, weight: Font.DemiBold, letterSpacing: 0.8 })
    readonly property font monospaced: Qt.font({ family: "monospace", pixelSize: 12 })

    readonly property int radiusSmall: 6
    readonly property int radiusRow: 8
    readonly property int radiusImage: 10
    readonly property int radiusBanner: 12
    readonly property int radiusCard: 16
    readonly property int radiusSheet: 24

    readonly property int spacingTiny: 4
    readonly property int spacingSmall: 8
    readonly property int spacing: 12
    readonly property int spacingLarge: 16
    readonly property int spacingHuge: 24
    /// From the edge of a screen to what is on it.
    readonly property int margin: 24

    readonly property int controlHeight: 34
    readonly property int largeControlHeight: 44
    readonly property int rowHeight: 44
    /// No content of a single column grows wider than this, however large the display.
    readonly property int readableWidth: 1080

    /// In milliseconds; 0 where motion isn't wanted.
    readonly property int pressDuration: reducedMotion ? 0 : 120
    readonly property int hoverDuration: reducedMotion ? 0 : 160
    readonly property int sheetDuration: reducedMotion ? 0 : 180
    readonly property int pulseDuration: 1100
}
