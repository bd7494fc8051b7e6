import QtQuick
import Tavrin.Theme

/**
 * Work under way: how far, at what, and what has been found.
 *
 * ScanningPage { phase: progress.phase; path: progress.path; fraction: progress.fraction; found: progress.found }
 */
Item {
    id: root

    required property string phase
    /// What is in hand; empty when nothing is named.
    required property string path
    /// From 0 to 1; below 0 where none is known.
    required property real fraction
    /// What has been found; empty for nothing.
    required property string found

    Column {
        anchors.centerIn: parent
        width: Math.min(460, parent.width - 2 * Theme.margin)
        spacing: Theme.spacing

        BrandText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.phase
            font: Theme.headline
            elide: Text.ElideMiddle
        }
        ProgressLine {
            width: parent.width
            name: root.phase
            indeterminate: root.fraction < 0
            value: Math.max(0, root.fraction)
        }
        BrandText {
            width: parent.width
            // The line keeps its place while there is nothing to say.
            height: implicitHeight
            horizontalAlignment: Text.AlignHCenter
            text: root.path
            font: Theme.caption
            color: Brand.muted
            elide: Text.ElideMiddle
            maximumLineCount: 1
            Accessible.ignored: text.length === 0
        }
        BrandText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.found
            font: Theme.captionSemibold
            color: Brand.gold
            Accessible.ignored: text.length === 0
        }
    }
}
