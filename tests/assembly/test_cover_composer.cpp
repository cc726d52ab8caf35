#include "assembly/cover_composer.h"
#include "picker_fixture.h"

using assembly::BoldRange;
using assembly::ComposedCover;
using assembly::CoverMode;
using assembly::CoverRow;

namespace {

const std::vector<CoverRow> kSongs = {{"Adams", "Morning", 165, "1"},
                                      {"Baker", "Night Train", 391, "2"}};
const std::vector<CoverRow> kNumbers = {{"Ann", "A", 3725, "9"}, {"Bo", "B", 1, "10"}};
const std::vector<CoverRow> kAlbums = {{"Adams", "Gold", 165, ""}, {"Baker", "Silver", 391, ""}};
// Performers of equal time come in the reverse of the statement's order.
const std::vector<CoverRow> kTies = {
    {"Adams", "", 100, ""}, {"Baker", "", 200, ""}, {"Carter", "", 100, ""}, {"Dale", "", 100, ""}};
constexpr CoverMode kP = CoverMode::Performer;
constexpr CoverMode kPa = CoverMode::PerformerAlbum;
constexpr CoverMode kPs = CoverMode::PerformerSong;

// The bold ranges as "start:length ...".
QString boldOf(const ComposedCover& cover) {
    QStringList ranges;
    for (const BoldRange& range : cover.bold) {
        ranges << QString("%1:%2").arg(range.start).arg(range.length);
    }
    return ranges.join(' ');
}

// Times leave out the hours (3725 s is "2:05"); bold starts follow the track number's length.
TEST(CoverText, EachModeAndFormatHasItsSeparatorsBoldAndOrder) {
    const struct {
        CoverMode mode;
        const std::vector<CoverRow>& rows;
        QString format;
        bool byTime;
        QString text;
        QString bold;
    } cases[] = {
        {kPs, kSongs, "MD", true, "1. Adams: Morning  2. Baker: Night Train\n", "3:7 22:7"},
        {kPs, kSongs, "cd-ROM", false,
         "1.\tAdams   Morning  [2:45]\r\n2.\tBaker   Night Train  [6:31]\n", "3:7 31:7"},
        {kPs, kNumbers, "MD", false, "9. Ann: A  10. Bo: B\n", "3:5 15:4"},
        {kPs, kNumbers, "CD-ROM", false, "9.\tAnn   A  [2:05]\r\n10.\tBo   B  [0:01]\n",
         "3:5 24:4"},
        {kPa, kAlbums, "MD", false, "Adams: Gold / Baker: Silver \n", "0:7 14:7"},
        {kPa, kAlbums, "MD", true, "Baker: Silver / Adams: Gold \n", "0:7 16:7"},
        {kP, kAlbums, "MD", false, "Adams / Baker \n", ""},
        {kP, kTies, "MD", true, "Baker / Dale / Carter / Adams \n", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text.toStdString());
        const ComposedCover cover = composeCoverText(c.mode, c.rows, c.format, c.byTime);
        EXPECT_EQ(cover.text, c.text);
        EXPECT_EQ(boldOf(cover), c.bold);
        EXPECT_EQ(cover.setsParagraphs, c.mode == kPs);
        EXPECT_EQ(cover.hangingIndentTwips,
                  c.format.startsWith("cd", Qt::CaseInsensitive) ? 400 : 0);
    }
}

// Performers group by their sort names: "Zed" (sort "Abel") before "Adams"; a Null performer
// or title reads as empty.
TEST_F(PickerTest, CoverDataGroupsBySortNamesAndReplacesTheStoredText) {
    testsupport::execRaw(path,
                         "INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, "
                         "Track_Artist_Name, ArtistSort, Track_Title, Album_Title, Length) "
                         "VALUES (1, 1, 'Adams', 'Adams', 'Morning', 'Gold', 165), "
                         "(1, 2, 'Zed', 'Abel', 'Night', 'Silver', 300), "
                         "(1, 3, 'Adams', 'Adams', 'Evening', 'Gold', 100), "
                         "(1, 4, NULL, NULL, NULL, 'Silver', NULL)");
    const auto compose = [&](qint64 id, CoverMode mode, bool byTime) {
        return retrieveCoverData(open(), id, mode, "MD", byTime).text;
    };
    EXPECT_EQ(compose(1, kP, false), " / Zed / Adams \n");
    EXPECT_EQ(compose(1, kP, true), "Zed / Adams /  \n");
    EXPECT_EQ(compose(1, kPs, true),
              "1. Adams: Morning  2. Zed: Night  3. Adams: Evening  4. : \n");
    EXPECT_EQ(compose(1, kPa, false), ": Silver / Zed: Silver / Adams: Gold \n");
    EXPECT_EQ(
        testsupport::queryRaw(path, "SELECT CoverMemo FROM Compilation WHERE CompilationID_P = 1"),
        ": Silver / Zed: Silver / Adams: Gold \n");
    EXPECT_EQ(compose(2, kP, false), " \n");
    EXPECT_EQ(testsupport::errorNumber([&] { compose(99, kP, false); }), 3021);
}

}  // namespace
