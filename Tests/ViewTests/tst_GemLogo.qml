import QtQuick
import QtTest
import Tavrin.Theme
import "Find.js" as Find

Item {
    id: page

    width: 200
    height: 200

    Component {
        id: maker

        GemLogo {}
    }

    TestCase {
        name: "GemLogo"
        when: windowShown

        function gem(logo) {
            return Find.all(logo, item => item instanceof GemPainting)[0]
        }

        function cleanup() {
            Theme.reducedMotion = false
        }

        function test_theGlowPulsesOnceTheGemHasAppeared() {
            const logo = createTemporaryObject(maker, page)
            verify(!logo.appeared && gem(logo).elapsed < gem(logo).completeAfter)
            compare(logo.pulse, 0)
            tryVerify(() => gem(logo).elapsed > gem(logo).completeAfter / 2 || logo.appeared)
            verify(logo.appeared || logo.pulse === 0)
            tryVerify(() => logo.pulse > 0)
            compare(gem(logo).elapsed, gem(logo).completeAfter)
        }

        function test_itPulsesForEver() {
            const logo = createTemporaryObject(maker, page)
            tryVerify(() => logo.pulse === 1)
            tryVerify(() => logo.pulse === 0)
            tryVerify(() => logo.pulse > 0)
        }

        function test_itStandsWhereItIsNotAnimated() {
            const logo = createTemporaryObject(maker, page, { animate: false })
            compare(logo.moves, false)
            compare(logo.pulse, 0)
            compare(gem(logo).elapsed, gem(logo).completeAfter)
        }

        function test_itAppearsOnceHoweverOftenItIsSeenAgain() {
            const logo = createTemporaryObject(maker, page)
            tryVerify(() => logo.appeared)
            logo.visible = false
            logo.visible = true
            compare(gem(logo).elapsed, gem(logo).completeAfter)
        }

        function test_withLessMotionItStandsWhole() {
            Theme.reducedMotion = true
            const logo = createTemporaryObject(maker, page)
            compare(gem(logo).elapsed, gem(logo).completeAfter)
            compare(logo.pulse, 0)
        }

        function test_whoseAppearingIsCutShortStandsWhole() {
            const logo = createTemporaryObject(maker, page)
            Theme.reducedMotion = true
            compare(gem(logo).elapsed, gem(logo).completeAfter)
        }
    }
}
