import QtQuick
import QtTest
import Tavrin.Words

TestCase {
    name: "Words"

    function test_aMessageIsReadByItsName() {
        compare(S.appName, "Tavrin Clean")
        compare(S.actionCancel, "Cancel")
    }

    function test_aMessageWithParametersIsCalled() {
        compare(S.countItems(1), "1 item")
        compare(S.countItemsSize(3, "1.2 GB"), "3 items · 1.2 GB")
    }
}
