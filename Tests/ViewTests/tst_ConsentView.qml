import QtQuick
import QtTest
import Tavrin.Kit
import Tavrin.Theme
import Tavrin.Views
import Tavrin.Words
import "Find.js" as Find

Item {
    id: page

    width: 940
    height: 620

    ContentView { id: content; anchors.fill: parent }

    TestCase {
        name: "ConsentView"
        when: windowShown

        function initTestCase() {
            Theme.reducedMotion = true
        }

        function acceptButton() {
            return Find.button(content, S.consentAcceptButton)
        }

        function test_1_theFirstStartShowsTheTermsAndNothingElse() {
            verify(!App.consent.accepted)
            verify(Find.says(content, S.consentTitle))
            for (const text of [S.consentBulletYouDecide, S.consentBulletReversible, S.consentBulletBackup,
                                S.consentTermsHeading, S.consentTermsBody, S.consentAgreeToggle, S.consentReadPrivacy])
                verify(Find.says(content, text), text)
            verify(!Find.says(content, S.navHistory))
            verify(!stage.asked().includes("leave for banners"))
        }

        function test_2_theButtonFollowsTheTick() {
            const box = Find.button(content, S.consentAgreeToggle)
            verify(!acceptButton().enabled)
            mouseClick(box, 10, box.height / 2)
            verify(acceptButton().enabled)
            mouseClick(box, 10, box.height / 2)
            verify(!acceptButton().enabled)
            mouseClick(acceptButton())
            verify(!App.consent.accepted)
        }

        function test_3_theTickHasTheKeyboardFirstAndSpaceSetsIt() {
            verify(Find.button(content, S.consentAgreeToggle).activeFocus)
            keyClick(Qt.Key_Space)
            verify(acceptButton().enabled)
            keyClick(Qt.Key_Space)
        }

        function test_3_theTermsAreAStopWithANameAndARing() {
            const terms = Find.all(content, item => item instanceof ConsentTerms)[0]
            terms.forceActiveFocus(Qt.TabFocusReason)
            compare(terms.Accessible.role, Accessible.Pane)
            compare(terms.Accessible.name, S.consentTermsHeading)
            verify(Find.all(terms, item => item instanceof FocusRing).length === 1)
            Find.button(content, S.consentAgreeToggle).forceActiveFocus(Qt.TabFocusReason)
            compare(Find.all(terms, item => item instanceof FocusRing).length, 0)
        }

        function test_4_inTheLowestWindowEverythingIsInView() {
            const button = acceptButton()
            const place = button.mapToItem(content, 0, 0)
            verify(place.y + button.height <= content.height, place.y)
        }

        function test_5_acceptingOpensTheProgram() {
            Find.button(content, S.consentAgreeToggle).ticked()
            mouseClick(acceptButton())
            verify(App.consent.accepted)
            tryVerify(() => Find.says(content, S.navHistory))
            verify(!Find.says(content, S.consentTitle))
            compare(content.selection, "smartScan")
            verify(stage.asked().includes("leave for banners"))
        }
    }
}
