import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Tavrin.Theme

// The ids are wanted at once: nothing puts another item in the place of these.
// qmllint disable deferred-property-id

/**
 * Shows the file that QuickLook names, over the whole window: a picture, the beginning of a text, or what is known of it.
 * Esc and Space close it; the arrow keys and their kin go through a long text. One stands in each window.
 *
 * QuickLookSheet { title: S.actionQuickLook; closeName: S.windowClose; created: S.windowCreated; modified: S.windowModified }
 */
T.Popup {
    id: root

    /// What it is, for screen readers; the file's name is added.
    required property string title
    /// What its button does.
    required property string closeName
    /// What stands before the two dates of a file that can't be shown.
    required property string created
    required property string modified

    readonly property bool wanted: QuickLook.url.length > 0
    readonly property bool showsPicture: picture.status === Image.Ready && picture.implicitWidth > 0
    /// What had the keyboard; it gets it back.
    property Item before: null

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(900, parent.width - 4 * Theme.margin) : 0
    height: parent ? Math.min(680, parent.height - 4 * Theme.margin) : 0
    padding: Theme.spacingLarge
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnPressOutside

    onWantedChanged: wanted ? open() : close()
    onAboutToShow: before = parent.Window.activeFocusItem
    onClosed: {
        QuickLook.close()
        before?.forceActiveFocus()
    }
    onOpened: {
        page.contentY = 0
        content.forceActiveFocus(Qt.PopupFocusReason)
    }

    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.sheetDuration } }

    T.Overlay.modal: Rectangle { color: Brand.black(0.5) }

    background: Rectangle {
        radius: Theme.radiusSheet
        color: Brand.sheet
        border.width: 1
        border.color: Brand.white(0.14)

        Glow { radius: Theme.radiusSheet; blur: 24; color: Brand.black(1); strength: 0.5 }
    }
    contentItem: FocusScope {
        id: content

        focus: true

        Keys.onEscapePressed: root.close()
        Keys.onSpacePressed: root.close()
        Keys.onPressed: event => {
            const line = 3 * Theme.monospaced.pixelSize
            const reach = Math.max(line, page.height - line)
            if (event.key === Qt.Key_Down) page.scrollTo(page.contentY + line)
            else if (event.key === Qt.Key_Up) page.scrollTo(page.contentY - line)
            else if (event.key === Qt.Key_PageDown) page.scrollTo(page.contentY + reach)
            else if (event.key === Qt.Key_PageUp) page.scrollTo(page.contentY - reach)
            else if (event.key === Qt.Key_Home) page.scrollTo(0)
            else if (event.key === Qt.Key_End) page.scrollTo(page.contentHeight)
            else return
            event.accepted = true
        }

        Accessible.role: Accessible.Dialog
        Accessible.name: root.title + " — " + QuickLook.name
        Accessible.description: QuickLook.summary

        BrandText {
            id: heading

            anchors { left: parent.left; right: facts.left; rightMargin: Theme.spacing; verticalCenter: closeButton.verticalCenter }
            text: QuickLook.name
            font: Theme.headline
            elide: Text.ElideMiddle
            maximumLineCount: 1
        }
        BrandText {
            id: facts

            anchors { right: closeButton.left; rightMargin: Theme.spacing; baseline: heading.baseline }
            text: QuickLook.summary
            font: Theme.caption
            color: Brand.muted
        }
        IconButton {
            id: closeButton

            anchors { right: parent.right; top: parent.top }
            symbol: "xmark"
            name: root.closeName
            onClicked: root.close()
        }
        Item {
            anchors { left: parent.left; right: parent.right; top: closeButton.bottom; topMargin: Theme.spacing; bottom: parent.bottom }

            Image {
                id: picture

                anchors.centerIn: parent
                // Never larger than it is.
                width: Math.min(implicitWidth, parent.width)
                height: Math.min(implicitHeight, parent.height)
                asynchronous: true
                cache: false
                visible: root.showsPicture
                fillMode: Image.PreserveAspectFit
                source: root.wanted ? FileImages.picture(QuickLook.url) : ""
                sourceSize.width: 1280 * Screen.devicePixelRatio
                sourceSize.height: 1280 * Screen.devicePixelRatio
            }
            Rectangle {
                anchors.fill: parent
                visible: QuickLook.isText && !root.showsPicture
                radius: Theme.radiusBanner
                color: Brand.black(0.25)

                Flickable {
                    id: page

                    function scrollTo(y) {
                        contentY = Math.max(0, Math.min(contentHeight - height, y))
                    }

                    anchors { fill: parent; margins: Theme.spacing }
                    contentHeight: words.implicitHeight
                    clip: true
                    boundsBehavior: Flickable.StopAtBounds
                    T.ScrollBar.vertical: BrandScrollBar {}

                    BrandText {
                        id: words

                        // Clear of the scroll bar.
                        width: page.width - Theme.spacing
                        text: QuickLook.text
                        font: Theme.monospaced
                        wrapMode: Text.WrapAnywhere
                    }
                }
            }
            Column {
                anchors.centerIn: parent
                visible: !QuickLook.isText && !root.showsPicture
                spacing: Theme.spacing

                RowIcon {
                    anchors.horizontalCenter: parent.horizontalCenter
                    url: QuickLook.url
                    size: 128
                }
                Repeater {
                    model: [
                        { label: root.created, date: QuickLook.created },
                        { label: root.modified, date: QuickLook.modified }
                    ]

                    BrandText {
                        required property var modelData

                        anchors.horizontalCenter: parent?.horizontalCenter
                        visible: modelData.date.length > 0
                        text: modelData.label + " " + modelData.date
                        font: Theme.caption
                        color: Brand.muted
                    }
                }
            }
        }
    }
}
