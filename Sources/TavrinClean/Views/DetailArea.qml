import QtQuick
import Tavrin.Views

/**
 * Shows one screen. This is the one place that knows which view belongs to which screen; a view is made anew each time
 * that its screen is chosen, so what was typed or folded there is gone, and what its model found is not.
 *
 * DetailArea { screen: "history" }
 */
FocusScope {
    id: root

    /// The screen's key.
    required property string screen

    /// Does what the screen is there for, where it has such a thing.
    function enter() {
        loader.forceActiveFocus(Qt.TabFocusReason)
        loader.item?.enter()
    }

    function show() {
        if (Screens.isModule(screen))
            loader.setSource("ModuleDetailView.qml", { moduleKey: screen })
        else if (screen === "history")
            loader.setSource("HistoryView.qml")
        else
            loader.setSource("NotBuiltView.qml", { screen: screen })
    }

    onScreenChanged: show()
    Component.onCompleted: show()

    Loader {
        id: loader

        anchors.fill: parent
        focus: true
        onLoaded: item.focus = true
    }
}
