import QtQuick
import QtQuick.Templates as T
import Tavrin.Theme

// The ids are wanted at once: nothing puts another item in the place of these.
// qmllint disable deferred-property-id

// The components in it are its own, and see its ids; a loader of this release can't make them where that is declared.
// qmllint disable unqualified

/**
 * A word of help beside what the mouse rests on or what has the keyboard. It stands in the item that it explains, and is
 * made for as long as it is wanted: a list holds hundreds of such items.
 *
 * HelpTip { wanted: button.hovered || button.visualFocus; text: S.historyPutBackHelp }
 */
Item {
    id: root

    required property bool wanted
    required property string text
    readonly property bool shown: bubble.active

    onWantedChanged: if (!wanted) bubble.active = false

    Accessible.ignored: true

    Timer {
        interval: 600
        running: root.wanted && root.text.length > 0
        onTriggered: bubble.active = true
    }
    Loader {
        id: bubble

        active: false
        sourceComponent: Component {
            T.ToolTip {
                parent: root.parent
                x: root.parent ? Math.round((root.parent.width - width) / 2) : 0
                y: root.parent ? root.parent.height + 6 : 0
                width: Math.min(300, implicitContentWidth + leftPadding + rightPadding)
                implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
                margins: 8
                padding: 8
                leftPadding: 10
                rightPadding: 10
                visible: true
                closePolicy: T.Popup.NoAutoClose
                text: root.text

                background: Rectangle {
                    radius: Theme.radiusRow
                    color: Brand.sheet
                    border.width: 1
                    border.color: Brand.white(0.18)
                }
                contentItem: BrandText {
                    text: root.text
                    font: Theme.caption
                    wrapMode: Text.Wrap
                    color: Brand.lavender
                }
            }
        }
    }
}
