// The medium as it is recorded, with figures worked out by hand.
#include <gtest/gtest.h>

#include "medium/medium_fit.h"

namespace {

using medium::MdMode;

std::vector<medium::Track> tracksOf(const std::vector<qint64>& seconds) {
    std::vector<medium::Track> tracks;
    for (const qint64 length : seconds) {
        tracks.push_back({length, QStringLiteral("A"), QStringLiteral("B")});
    }
    return tracks;
}

TEST(MiniDisc, EachModeRoundsTracksToItsBlocksAndNamesTheLeastModeThatHoldsThem) {
    struct Case {
        int minutes;
        std::vector<qint64> seconds;
        std::array<qint64, 4> left;  // SP, LP2, LP4, mono
        std::optional<MdMode> least;
    };
    const std::vector<Case> cases{
        // 20 tracks of 3:01: 182 s each in SP, 184 s in LP2, LP4 and mono.
        {74, std::vector<qint64>(20, 181), {800, 5200, 14080, 5200}, MdMode::Sp},
        {60, std::vector<qint64>(30, 181), {-1860, 1680, 8880, 1680}, MdMode::Lp2},
        {74, {185}, {4254, 8692, 17568, 8692}, MdMode::Sp},  // 186, 188, 192 s
        {10, std::vector<qint64>(6, 400), {-1800, -1200, 0, -1200}, MdMode::Lp4},
        {10, std::vector<qint64>(6, 401), {-1812, -1224, -48, -1224}, std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.minutes);
        const medium::MiniDiscFit fit = medium::fitMiniDisc(c.minutes, tracksOf(c.seconds));
        ASSERT_EQ(fit.modes.size(), 4u);
        for (size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(fit.modes[i].left(), c.left[i])
                << medium::mdModeName(fit.modes[i].mode).toStdString();
        }
        EXPECT_EQ(fit.leastMode, c.least);
        EXPECT_EQ(fit.titleCharacters, int(c.seconds.size()) * 5);  // "A - B"
    }
}

TEST(MiniDisc, CountsTracksAndTitlesAgainstTheDiscsLimits) {
    EXPECT_FALSE(medium::fitMiniDisc(74, tracksOf(std::vector<qint64>(254, 1))).tooManyTracks);
    EXPECT_TRUE(medium::fitMiniDisc(74, tracksOf(std::vector<qint64>(255, 1))).tooManyTracks);
    std::vector<medium::Track> long_titles(17, {1, QString(47, 'p'), QString(50, 't')});
    EXPECT_FALSE(medium::fitMiniDisc(74, long_titles).titlesOverBudget());  // 17 * 100 = 1,700
    long_titles.push_back({1, "P", "T"});
    EXPECT_TRUE(medium::fitMiniDisc(74, long_titles).titlesOverBudget());
}

TEST(Cassette, SideATakesTheOrderUpToTheFirstTrackThatDoesNotFit) {
    // A C90: 45 minutes a side. The 7th track crosses the end of side A; the short 8th goes to
    // side B all the same, as the tape is recorded in order.
    const medium::CassetteSides sides =
        medium::splitCassette(90, tracksOf({400, 400, 400, 400, 400, 400, 500, 100}));
    EXPECT_EQ(sides.sideCapacity, 2700);
    EXPECT_EQ(sides.sideA, 2400);
    EXPECT_EQ(sides.sideB, 600);
    EXPECT_EQ(sides.crossingTrack, 6);
    EXPECT_EQ(sides.difference(), 1800);
    // Turned after the 4th track instead, the sides differ least: 1,600 and 1,400 s.
    EXPECT_EQ(std::tuple(sides.evenTurn, sides.evenSideA, sides.evenSideB),
              std::tuple(std::optional(4), 1600, 1400));
    const medium::CassetteSides short_sides = medium::splitCassette(90, tracksOf({100, 200}));
    EXPECT_EQ(short_sides.crossingTrack, std::nullopt);
    EXPECT_EQ(short_sides.evenTurn, 1);
    EXPECT_EQ(medium::splitCassette(60, tracksOf({1000, 1000, 1000, 700})).evenTurn, std::nullopt);
}

TEST(Cassette, BalancingKeepsEachSidesOrderAndEvensTheSides) {
    // Recorded in order on a C60, side A holds 900 + 900 and side B 300 + 300.
    const auto balanced = medium::balanceCassette(60, tracksOf({900, 900, 300, 300}));
    ASSERT_TRUE(balanced.has_value());
    EXPECT_EQ(balanced->order, (std::vector<int>{0, 2, 1, 3}));
    EXPECT_EQ(balanced->sideATracks, 2);
    EXPECT_EQ(balanced->sideA, 1200);
    EXPECT_EQ(balanced->sideB, 1200);
    // 1,000 s a side cannot be reached: 900 and 1,100, side A the shorter.
    const auto uneven = medium::balanceCassette(60, tracksOf({600, 300, 300, 600, 200}));
    ASSERT_TRUE(uneven.has_value());
    EXPECT_EQ(uneven->sideA, 900);
    EXPECT_EQ(uneven->sideB, 1100);
    EXPECT_EQ(medium::balanceCassette(60, tracksOf({1900})), std::nullopt);
    EXPECT_EQ(medium::balanceCassette(60, tracksOf({1000, 1000, 1000, 700})), std::nullopt);
}

TEST(AudioCd, EveryTrackHasItsPauseAndTheDiscsLeftTimesFollow) {
    const medium::AudioCdFit fit = medium::fitAudioCd(tracksOf(std::vector<qint64>(10, 300)));
    EXPECT_EQ(fit.usedFrames, 10 * 302 * 75);
    EXPECT_EQ(fit.leftOn74, 4440 - 3020);
    EXPECT_EQ(fit.leftOn80, 4800 - 3020);
    EXPECT_EQ(medium::fitAudioCd(tracksOf({4439})).leftOn74, -1);  // the first pause counts
}

}  // namespace
