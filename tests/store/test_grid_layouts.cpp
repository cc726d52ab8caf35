#include <gtest/gtest.h>

#include <QMetaEnum>
#include <QStringList>

#include "store/grid_layouts.h"

namespace {

using store::GridKind;

// A setting as text; system colours by their role.
QString colourText(const store::GridColour& colour) {
    const auto* role = std::get_if<QPalette::ColorRole>(&colour);
    return role ? QMetaEnum::fromType<QPalette::ColorRole>().valueToKey(*role)
                : std::get<QColor>(colour).name();
}

template <class... Describe>
struct SettingText : Describe... {
    using Describe::operator()...;
};

QString settingText(const store::GridSetting& setting) {
    return std::visit(
        SettingText{
            [](const store::ColumnAlign& s) {
                return QString::number(s.column) + "DLRC"[int(s.alignment)];
            },
            [](const store::RowHeight& s) { return QStringLiteral("height %1").arg(s.twips); },
            [](const store::Appearance& s) { return QString(int(s.look) ? "3d" : "flat"); },
            [](const store::HighlightColours& s) {
                return "selected " + colourText(s.background) + " " + colourText(s.text);
            },
            [](const store::ColumnForeground& s) {
                return QStringLiteral("colour %1 ").arg(s.column) + colourText(s.colour);
            },
            [](const auto& rowBackground) { return colourText(rowBackground.colour); }},
        setting);
}

const QString kTargetColumns =
    "Track|TrackNo|N, Track Performer|Track_Artist_Name|T, Track Title|Track_Title|T, "
    "Time|Length|P, Recorded|RecordedStart|T, Album Title|Album_Title|T, Live|Live|Y, "
    "Version|Version|T, Album Performer|Album_Artist_Name|T, Item|Item|N, Index|Index|N";
const QString kTargetAlignments = "0R, 1L, 2L, 3C, 4C, 5L, 6C, 7L, 8L, 9R, 10R, flat";
// The settings every grid starts with on a screen of 256 colours and on one of more.
const QString kFew = "#ffffff, height 250, #ffffff, selected Highlight HighlightedText, ";
const QString kMany = "#ffffff, height 250, #e0e0e0, selected ToolTipBase ButtonText, ";

// Per grid kind: its columns as "caption|field|kind" (T text, N number, P play time, D date,
// Y yes/no), the screen's colours and its layout: the common settings, each column's alignment
// (D the grid's own, L, R, C), then the kind's extras.
const std::tuple<GridKind, QString, double, QString> kGrids[] = {
    {GridKind::Overview,
     "Compilation Title|c_name|T, Storage|c_box|T, Track #|c_sumtrack|N, "
     "Total Time|c_sumtime|P, Format|c_format|T, Manufacturer|Manufacturer|T, "
     "Rec. Date|recdate|D, Length|c_length|N, Notes|c_notes|T",
     65536, kMany + "0L, 1L, 2R, 3C, 4D, 5D, 6C, 7R, 8L, 3d, height 300"},
    // The browser's tracks also align a ninth column, which they lack.
    {GridKind::Compilation,
     "Track|TrackNo|N, Track Performer|Track_Artist_Name|T, Track Title|Track_Title|T, "
     "Time|Length|P, Recorded|RecordedStart|T, Live|Live|Y, Album Title|Album_Title|T, "
     "Version|Version|T",
     256, kFew + "0R, 1L, 2L, 3C, 4C, 5C, 6L, 7L, 8L, flat"},
    {GridKind::GetSource,
     "Track Performer|PerformerTrack|T, Track Title|TitleTrack|T, Time|Length|P, "
     "Recorded|MyRecorded|N, Live|Live|Y, Version|Version|T, Rating|RatingTrack|T, "
     "Album Title|TitleAlbum|T, Album Performer|PerformerAlbum|T, Item|Item|N, Index|Index|N",
     257, kMany + "0L, 1L, 2C, 3C, 4C, 5L, 6L, 7L, 8L, 9R, 10R, 3d"},
    {GridKind::GetTarget, kTargetColumns, 2, kFew + kTargetAlignments},
    {GridKind::Rearrange, kTargetColumns, 16777216,
     kMany + kTargetAlignments + ", height 300, colour 0 #ff0000"},
    {GridKind::Track,
     "Compilation Title|Name|T, Track #|TrackNo|N, Storage|Box|T, Format|Format|T, "
     "Manufacturer|Manufacturer|T, Rec. Date|RecDate|D",
     256, kFew + "0L, 1R, 2L, 3L, 4L, 5C, flat"},
};

TEST(GridLayouts, EachKindShowsItsCatalogueColumnsWithItsLayout) {
    for (const auto& [kind, columns, colours, settings] : kGrids) {
        QStringList shown, layout;
        for (const store::GridColumnSpec& c : store::gridColumns(kind))
            shown << c.caption + "|" + c.dataField + "|" + QChar("TNPDYC"[int(c.kind)]);
        EXPECT_EQ(shown.join(", "), columns);
        for (const auto& setting : store::gridLayout(kind, colours).settings)
            layout << settingText(setting);
        EXPECT_EQ(layout.join(", "), settings);
    }
}

}  // namespace
