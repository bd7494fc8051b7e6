import QtQuick
import QtQuick.Window
import Tavrin.Theme

/**
 * A file's icon, or a small picture of what is in it.
 *
 * RowIcon { url: row.url; preferThumbnail: row.isImage; size: 26 }
 */
Item {
    id: root

    /// In absolute form, "file:///a%20b"; a folder's ends with a slash.
    required property string url
    property bool preferThumbnail: false
    property real size: 26

    /// The radius of a picture's corners, as a share of the side.
    readonly property real cornerShare: Math.min(Theme.radiusImage / size, 0.16)
    readonly property bool showsThumbnail: picture.status === Image.Ready && picture.implicitWidth > 0
    readonly property string systemIcon: FileImages.icon(url)

    implicitWidth: size
    implicitHeight: size

    Accessible.ignored: true

    Image {
        anchors.fill: parent
        visible: !root.showsThumbnail && root.systemIcon.length > 0
        source: root.systemIcon
        sourceSize.width: root.size * Screen.devicePixelRatio
        sourceSize.height: root.size * Screen.devicePixelRatio
    }
    Symbol {
        anchors.centerIn: parent
        visible: !root.showsThumbnail && root.systemIcon.length === 0
        key: FileImages.symbol(root.url)
        size: Math.round(root.size * 0.8)
        color: Brand.lavender
    }
    // The icon stays where no picture comes. It arrives cut to a square, with its corners already round.
    Image {
        id: picture

        anchors.fill: parent
        asynchronous: true
        source: root.preferThumbnail && root.visible ? FileImages.thumbnail(root.url, root.cornerShare) : ""
        sourceSize.width: root.size * Screen.devicePixelRatio
        sourceSize.height: root.size * Screen.devicePixelRatio
    }
}
