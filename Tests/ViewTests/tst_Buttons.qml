import QtQuick
import QtTest
import Tavrin.Theme
import "Find.js" as Find

Item {
    width: 400
    height: 300

    Column {
        GoldButton { id: gold; text: "Gold" }
        GoldButton { id: large; text: "Large"; large: true }
        GhostButton { id: ghost; text: "Ghost" }
        DangerButton { id: danger; text: "Danger"; symbol: "trash" }
        IconButton { id: icon; symbol: "eye"; name: "Look" }
    }

    SignalSpy { id: clicks; signalName: "clicked" }

    TestCase {
        name: "Buttons"
        when: windowShown

        function init() {
            Theme.reducedMotion = true
        }

        function cleanup() {
            for (const button of [gold, ghost, danger, icon])
                button.enabled = true
        }

        function test_eachIsPressedByMouseAndKeyboard_data() {
            return [{ tag: "gold", button: gold }, { tag: "ghost", button: ghost },
                    { tag: "danger", button: danger }, { tag: "icon", button: icon }]
        }

        function test_eachIsPressedByMouseAndKeyboard(row) {
            clicks.target = row.button
            clicks.clear()
            mouseClick(row.button)
            compare(clicks.count, 1)
            row.button.forceActiveFocus()
            keyClick(Qt.Key_Space)
            keyClick(Qt.Key_Return)
            keyClick(Qt.Key_Enter)
            compare(clicks.count, 4)
        }

        function test_aHeldKeyPressesItOnce_data() {
            return [{ tag: "Return", key: Qt.Key_Return }, { tag: "Enter", key: Qt.Key_Enter }, { tag: "Space", key: Qt.Key_Space }]
        }

        function test_aHeldKeyPressesItOnce(row) {
            clicks.target = ghost
            clicks.clear()
            ghost.forceActiveFocus()
            stage.holdKey(row.key)
            compare(clicks.count, 1)
        }

        function test_aDoubleClickPressesItOnce() {
            clicks.target = ghost
            clicks.clear()
            mouseDoubleClickSequence(ghost)
            compare(clicks.count, 1)
        }

        function test_eachTellsScreenReadersWhatItIs_data() {
            return [{ tag: "gold", button: gold, name: "Gold" }, { tag: "ghost", button: ghost, name: "Ghost" },
                    { tag: "danger", button: danger, name: "Danger" }, { tag: "icon", button: icon, name: "Look" }]
        }

        function test_eachTellsScreenReadersWhatItIs(row) {
            compare(row.button.Accessible.name, row.name)
            compare(row.button.Accessible.role, Accessible.Button)
            clicks.target = row.button
            clicks.clear()
            row.button.Accessible.pressAction()
            compare(clicks.count, 1)
        }

        function test_aDisabledOneIsDimAndDoesNothing() {
            clicks.target = gold
            clicks.clear()
            gold.enabled = false
            mouseClick(gold)
            gold.Accessible.pressAction()
            compare(clicks.count, 0)
            compare(gold.opacity, 0.5)
        }

        function test_pressedItShrinksAndDimsAsItsStyleSays_data() {
            return [{ tag: "gold", button: gold, opacity: 0.82, scale: 0.98 },
                    { tag: "ghost", button: ghost, opacity: 0.85, scale: 1 },
                    { tag: "danger", button: danger, opacity: 0.82, scale: 0.98 }]
        }

        function test_pressedItShrinksAndDimsAsItsStyleSays(row) {
            compare(row.button.opacity, 1)
            mousePress(row.button)
            tryCompare(row.button, "opacity", row.opacity)
            tryCompare(row.button, "scale", row.scale)
            mouseRelease(row.button)
            tryCompare(row.button, "opacity", 1)
        }

        // As the Web Content Accessibility Guidelines measure it.
        function luminance(color) {
            const linear = share => share <= 0.04045 ? share / 12.92 : Math.pow((share + 0.055) / 1.055, 2.4)
            return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b)
        }

        function contrast(one, other) {
            const both = [luminance(one), luminance(other)].sort((a, b) => a - b)
            return (both[1] + 0.05) / (both[0] + 0.05)
        }

        function test_underTheMouseItIsNoHarderToRead_data() {
            return [{ tag: "gold", button: gold }, { tag: "danger", button: danger }]
        }

        function test_underTheMouseItIsNoHarderToRead(row) {
            for (const plate of [row.button.plateColor, row.button.plateEndColor]) {
                const veiled = Qt.tint(plate, row.button.hoverVeil)
                verify(contrast(row.button.tint, veiled) > contrast(row.button.tint, plate), plate)
            }
        }

        function test_theTextHasRoomOnBothSides() {
            compare(gold.leftPadding, 18)
            compare(gold.rightPadding, 18)
            compare(large.leftPadding, 18)
        }

        function test_aSymbolTellsItsNameToWhomPointsAtIt() {
            const tip = () => Find.all(icon, item => item instanceof HelpTip)[0]
            mouseMove(icon)
            compare(tip().text, "Look")
            mouseMove(icon, 300, 200)
            compare(tip(), undefined)
            icon.forceActiveFocus(Qt.TabFocusReason)
            compare(tip().text, "Look")
            gold.forceActiveFocus()
        }

        function test_withLessMotionNothingEases() {
            compare(Theme.pressDuration, 0)
            Theme.reducedMotion = false
            compare(Theme.pressDuration, 120)
        }
    }
}
