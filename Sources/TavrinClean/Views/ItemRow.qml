import QtQuick
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words

// What only some rows show is made for those alone: hundreds of rows are made while somebody scrolls. The components are the
// row's own, and see its ids.
// qmllint disable unqualified

/**
 * One finding in the list of results.
 *
 * ItemRow { name: row.name; detail: row.detail; sizeText: row.size; url: row.url; ticked: row.selected }
 */
Item {
    id: root

    /// The file, in absolute form.
    required property string url
    /// What stands first: a file's name, or what a language's file belongs to.
    required property string name
    /// The line below it; none while it is empty.
    required property string detail
    required property bool detailIsPath
    required property string sizeText
    required property bool ticked
    required property bool isFolder
    required property bool isImage
    /// Why it isn't safe while its app runs; empty while it doesn't.
    required property string runningHelp
    /// A mail attachment's badge instead of the detail, empty for all else, and whether it comes back by itself.
    required property string mailBadge
    required property bool redownloads
    /// When it arrived; empty where that isn't told.
    required property string date
    required property bool expanded
    /// The keyboard is on this row.
    property bool current: false

    function told(part: string): string {
        return part.length > 0 ? part + " · " : ""
    }

    signal toggled()
    signal expandToggled()
    signal preview()
    signal menuWanted(point place)
    signal pressed()

    implicitHeight: 52

    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: told(mailBadge) + told(detail) + told(date) + told(runningHelp) + sizeText
    Accessible.checkable: true
    Accessible.checked: ticked
    Accessible.onPressAction: toggled()
    Accessible.onToggleAction: toggled()

    Rectangle {
        anchors.fill: parent
        radius: Theme.radiusRow
        color: Brand.white(root.current ? 0.07 : hover.hovered ? 0.04 : 0)
        FocusRing { shown: root.current && root.activeFocus; gap: -1 }
    }
    HoverHandler { id: hover }
    TapHandler {
        onPressedChanged: if (pressed) root.pressed()
        onDoubleTapped: root.isFolder ? root.expandToggled() : root.preview()
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => {
            root.pressed()
            root.menuWanted(eventPoint.position)
        }
    }

    CheckMark {
        id: mark

        x: 6
        anchors.verticalCenter: parent.verticalCenter
        focusPolicy: Qt.NoFocus
        name: root.name
        checkState: root.ticked ? Qt.Checked : Qt.Unchecked
        onTicked: root.toggled()
    }
    Loader {
        anchors { left: mark.right; verticalCenter: parent.verticalCenter }
        active: root.isFolder
        sourceComponent: Component {
            IconButton {
                implicitWidth: 24
                focusPolicy: Qt.NoFocus
                symbol: root.expanded ? "chevron.down" : "chevron.right"
                name: root.expanded ? S.windowHideContents : S.windowShowContents
                size: 14
                onClicked: root.expandToggled()
            }
        }
    }
    RowIcon {
        id: icon

        anchors { left: mark.right; leftMargin: 30; verticalCenter: parent.verticalCenter }
        url: root.url
        size: 26
        preferThumbnail: root.isImage
    }
    Column {
        anchors { left: icon.right; leftMargin: 10; right: trailing.left; rightMargin: Theme.spacing; verticalCenter: parent.verticalCenter }
        spacing: 2

        Row {
            width: parent.width
            spacing: 6

            Text {
                width: Math.min(implicitWidth, parent.width - (warning.visible ? warning.width + 6 : 0))
                text: root.name
                textFormat: Text.PlainText
                elide: Text.ElideMiddle
                maximumLineCount: 1
                font: Theme.body
                color: Brand.ink

                // Copies bear one name: where each lies tells them apart.
                HoverHandler { id: nameHover }
                Loader {
                    anchors.fill: parent
                    active: nameHover.hovered
                    sourceComponent: Component { HelpTip { wanted: true; text: Files.placeOf(root.url) } }
                }
            }
            Loader {
                id: warning

                anchors.verticalCenter: parent.verticalCenter
                active: root.runningHelp.length > 0
                visible: active
                sourceComponent: Component {
                    RunningMark { help: root.runningHelp; pointedAt: root.current && root.activeFocus }
                }
            }
        }
        Text {
            width: parent.width
            visible: root.detail.length > 0
            text: root.detail
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            maximumLineCount: 1
            font: root.detailIsPath ? Theme.monospaced : Theme.caption
            color: Brand.muted
        }
        Loader {
            active: root.mailBadge.length > 0
            visible: active
            sourceComponent: Component { MailBadge { text: root.mailBadge; redownloads: root.redownloads } }
        }
    }
    Row {
        id: trailing

        anchors { right: parent.right; rightMargin: 14; verticalCenter: parent.verticalCenter }
        spacing: 10

        Loader {
            anchors.verticalCenter: parent.verticalCenter
            active: root.date.length > 0
            visible: active
            sourceComponent: Component { DateMark { date: root.date } }
        }
        // Its place is kept in lists of dates, so that these stand below one another.
        Loader {
            width: 28
            height: 28
            visible: root.isImage || root.date.length > 0
            active: root.isImage
            sourceComponent: Component {
                IconButton {
                    focusPolicy: Qt.NoFocus
                    symbol: "eye"
                    name: S.actionQuickLook
                    onClicked: root.preview()
                }
            }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(76, implicitWidth)
            horizontalAlignment: Text.AlignRight
            text: root.sizeText
            textFormat: Text.PlainText
            font: Theme.body
            color: Brand.gold
        }
    }
}
