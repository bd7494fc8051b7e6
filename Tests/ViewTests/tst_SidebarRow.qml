import QtQuick
import QtTest
import Tavrin.Theme
import "Find.js" as Find

Item {
    id: page

    width: 400
    height: 300

    SidebarRow {
        id: row

        y: 40
        width: 228
        symbol: "hammer"
        title: "Basura de desarrollo"
        subtitle: "DerivedData, node_modules"
    }

    TestCase {
        name: "SidebarRow"
        when: windowShown

        function init() {
            mouseMove(page, 390, 290)
            row.width = 228
            row.figure = ""
        }

        function line(text) {
            return Find.all(row, item => item.text === text && item.truncated !== undefined)[0]
        }

        function capsule() {
            return Find.all(row, item => item instanceof Capsule)[0]
        }

        function tip() {
            return Find.all(row, item => item instanceof HelpTip)[0]
        }

        function test_theTitleKeepsItsWidthWhenAFigureComes() {
            const width = line(row.title).width
            verify(!line(row.title).truncated)
            row.figure = "99,1 MB"
            compare(line(row.title).width, width)
            verify(!line(row.title).truncated)
            verify(line(row.subtitle).width < width)
        }

        function test_theFigureStandsOnTheSecondLineBesideItsText() {
            row.figure = "99,1 MB"
            const middle = item => item.mapToItem(row, 0, item.height / 2).y
            fuzzyCompare(middle(capsule()), middle(line(row.subtitle)), 0.5)
            const end = line(row.subtitle).mapToItem(row, line(row.subtitle).width, 0).x
            verify(end < capsule().mapToItem(row, 0, 0).x)
            verify(capsule().mapToItem(row, 0, capsule().height).y <= row.height)
        }

        function test_screenReadersHearTheLineAndTheFigure() {
            compare(row.Accessible.description, "DerivedData, node_modules")
            row.figure = "99,1 MB"
            compare(row.Accessible.description, "DerivedData, node_modules · 99,1 MB")
        }

        function test_whatIsCutShortIsToldWhole() {
            mouseMove(row, 20, 20)
            compare(tip(), undefined)
            row.figure = "99,1 MB"
            verify(line(row.subtitle).truncated)
            compare(tip().text, row.subtitle)
            row.width = 120
            compare(tip().text, row.title + "\n" + row.subtitle)
            mouseMove(page, 390, 290)
            compare(tip(), undefined)
        }
    }
}
