#include "GemPainting.h"

#include <gtest/gtest.h>

namespace tavrin {
namespace {

TEST(Gem, theFacetsComeOneAfterAnother) {
    for (std::size_t facet = 1; facet < GemPainting::facetCount; ++facet)
        EXPECT_GT(GemPainting::facetPhase(facet), GemPainting::facetPhase(facet - 1));
}

TEST(Gem, aFacetFadesInOverSixTenthsOfASecondEasedOut) {
    EXPECT_EQ(GemPainting::facetOpacity(0, 0.0), 0.0);
    EXPECT_GT(GemPainting::facetOpacity(0, 0.3), 0.5);
    EXPECT_LT(GemPainting::facetOpacity(0, 0.59), 1.0);
    EXPECT_EQ(GemPainting::facetOpacity(0, 0.6), 1.0);
    EXPECT_EQ(GemPainting::facetOpacity(1, GemPainting::facetPhase(1)), 0.0);
}

TEST(Gem, theLinesFollowAfterAQuarterOfASecond) {
    EXPECT_EQ(GemPainting::linesOpacity(0.25), 0.0);
    EXPECT_GT(GemPainting::linesOpacity(0.26), 0.0);
    EXPECT_EQ(GemPainting::linesOpacity(0.85), 1.0);
}

TEST(Gem, isWholeAtItsEndAndWhenNobodyMovesIt) {
    for (std::size_t facet = 0; facet < GemPainting::facetCount; ++facet)
        EXPECT_EQ(GemPainting::facetOpacity(facet, GemPainting::completeAfter()), 1.0);
    EXPECT_EQ(GemPainting::linesOpacity(GemPainting::completeAfter()), 1.0);
    EXPECT_EQ(GemPainting().elapsed(), GemPainting::completeAfter());
}

}  // namespace
}  // namespace tavrin
