import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Tavrin.Theme

// The ids are wanted at once: nothing puts another item in the place of these.
// qmllint disable deferred-property-id

/**
 * The question before something is taken away, over the whole window. The safe answer has the keyboard, Esc gives it, and
 * Tab goes round inside; the destructive one is never the default.
 *
 * BrandConfirm {
 *     presented: page.confirmClean
 *     title: S.moduleConfirmTitle; message: page.question
 *     cancelTitle: S.actionCancel; confirmTitle: S.moduleConfirmAction
 *     onDismissed: page.confirmClean = false
 *     onConfirmed: model.clean()
 * }
 *
 * However it closes, `dismissed` comes first; `confirmed` follows where that was the answer.
 */
T.Popup {
    id: root

    required property bool presented
    required property string title
    required property string message
    required property string cancelTitle
    required property string confirmTitle

    signal confirmed()
    signal dismissed()

    /// What had the keyboard; it gets it back.
    property Item before: null

    function answer() {
        close()
        dismissed()
    }

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(400, parent ? parent.width - 2 * Theme.margin : 400)
    implicitHeight: contentItem.implicitHeight + 2 * padding
    padding: Theme.margin
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose

    onPresentedChanged: presented ? open() : close()
    Component.onCompleted: if (presented) open()
    onAboutToShow: {
        before = parent.Window.activeFocusItem
        cancelButton.forceActiveFocus(Qt.TabFocusReason)
    }
    onClosed: before?.forceActiveFocus()

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
        implicitHeight: column.implicitHeight
        focus: true

        Keys.onEscapePressed: root.answer()

        Accessible.role: Accessible.Dialog
        Accessible.name: root.title
        Accessible.description: root.message

        Column {
            id: column

            anchors { left: parent.left; right: parent.right }
            spacing: Theme.spacing

            BrandText {
                width: parent.width
                text: root.title
                font: Theme.title3
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
            }
            Flickable {
                width: parent.width
                // A long message in a low window scrolls, so that the answers can always be reached.
                height: Math.min(contentHeight, Math.max(60, (root.parent ? root.parent.height : 0) - 220))
                contentHeight: message.implicitHeight
                clip: contentHeight > height
                boundsBehavior: Flickable.StopAtBounds

                BrandText {
                    id: message

                    width: parent.width
                    text: root.message
                    color: Brand.lavender
                    lineHeight: 1.2
                    wrapMode: Text.Wrap
                }
            }
            Item {
                width: parent.width
                height: Theme.controlHeight + Theme.spacing

                Row {
                    anchors { right: parent.right; bottom: parent.bottom }
                    spacing: Theme.spacing

                    GhostButton {
                        id: cancelButton

                        text: root.cancelTitle
                        focus: true
                        onClicked: root.answer()
                    }
                    DangerButton {
                        text: root.confirmTitle
                        onClicked: {
                            root.answer()
                            root.confirmed()
                        }
                    }
                }
            }
        }
    }
}
