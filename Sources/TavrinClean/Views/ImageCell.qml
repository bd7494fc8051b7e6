import QtQuick
import Tavrin.Theme
import Tavrin.Words

/**
 * One picture of a set of similar ones: press it to look at it, its mark to let it go.
 *
 * ImageCell { url: row.url; name: row.name; sizeText: row.size; ticked: row.selected; grouped: true }
 */
Item {
    id: root

    required property string url
    required property string name
    required property string sizeText
    required property bool ticked
    /// It belongs to a set, so that what isn't ticked is kept.
    required property bool grouped
    property bool current: false

    readonly property int side: 112

    signal toggled()
    signal preview()
    signal menuWanted(point place)
    signal pressed()

    implicitWidth: 124
    implicitHeight: side + 12 + 20

    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.description: ticked ? sizeText : S.actionKeep + " · " + sizeText
    Accessible.checkable: true
    Accessible.checked: ticked
    Accessible.onPressAction: toggled()
    Accessible.onToggleAction: toggled()

    Item {
        id: frame

        anchors.horizontalCenter: parent.horizontalCenter
        y: 4
        width: root.side
        height: root.side

        RowIcon {
            anchors.fill: parent
            url: root.url
            preferThumbnail: true
            size: root.side
        }
        Rectangle {
            anchors.fill: parent
            radius: Theme.radiusImage
            color: Brand.clear
            border.width: root.ticked || root.grouped ? 2 : 1
            border.color: root.ticked ? Brand.danger : root.grouped ? Brand.safe : Brand.white(0.12)
        }
        FocusRing { shown: root.current && root.activeFocus; around: Theme.radiusImage }
        HoverHandler { id: hover }
        TapHandler {
            onPressedChanged: if (pressed) root.pressed()
            onTapped: root.preview()
        }
        TapHandler {
            acceptedButtons: Qt.RightButton
            onTapped: eventPoint => {
                root.pressed()
                root.menuWanted(eventPoint.position)
            }
        }
        HelpTip { wanted: hover.hovered; text: S.moduleSimilarPreviewHelp }
    }
    Rectangle {
        anchors { right: frame.right; rightMargin: 6; top: frame.top; topMargin: 6 }
        width: 28
        height: 28
        radius: width / 2
        color: Brand.black(markTap.pressed ? 0.8 : markHover.hovered ? 0.65 : 0.45)

        Symbol {
            anchors.centerIn: parent
            key: root.ticked ? "checkmark.circle.fill" : "circle"
            size: 20
            color: root.ticked ? Brand.danger : Brand.ink
        }
        HoverHandler { id: markHover }
        TapHandler {
            id: markTap

            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: root.toggled()
        }
    }
    Rectangle {
        anchors { left: frame.left; leftMargin: 6; bottom: frame.bottom; bottomMargin: 6 }
        visible: !root.ticked
        width: keep.implicitWidth + 14
        height: 20
        radius: height / 2
        color: Brand.black(0.6)

        Text {
            id: keep

            anchors.centerIn: parent
            text: S.actionKeep
            textFormat: Text.PlainText
            font: Theme.captionSemibold
            color: Brand.safe
        }
    }
    Text {
        anchors { horizontalCenter: parent.horizontalCenter; top: frame.bottom; topMargin: 4 }
        text: root.sizeText
        textFormat: Text.PlainText
        font: Theme.caption
        color: Brand.muted
    }
}
