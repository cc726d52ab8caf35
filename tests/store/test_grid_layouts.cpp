#include <gtest/gtest.h>

#include <QStringList>

#include "store/grid_layouts.h"

namespace {

using store::ColumnAlignment;
using store::ColumnFormat;
using store::GridLayout;

// "caption|field|format|alignment" with the format and alignment as one letter each:
// format - (none), T (FormatText Event), Y (Yes/No); alignment D, L, R, C.
QStringList describe(const std::vector<store::GridColumnSpec>& columns) {
    QStringList out;
    for (const auto& c : columns) {
        const char* format = c.format == ColumnFormat::None              ? "-"
                             : c.format == ColumnFormat::FormatTextEvent ? "T"
                                                                         : "Y";
        const char* align = "DLRC" + int(c.alignment);
        out << QStringLiteral("%1|%2|%3|%4")
                   .arg(c.caption, c.dataField)
                   .arg(format)
                   .arg(QChar(*align));
    }
    return out;
}

QStringList describeKind(const char* kind) {
    const auto* columns = store::gridColumns(kind);
    return columns ? describe(*columns) : QStringList{"unknown"};
}

const QStringList kTargetColumns = {"Track|TrackNo|-|R",
                                    "Track Performer|Track_Artist_Name|-|L",
                                    "Track Title|Track_Title|-|L",
                                    "Time|Length|T|C",
                                    "Recorded|RecordedStart|-|C",
                                    "Album Title|Album_Title|-|L",
                                    "Live|Live|Y|C",
                                    "Version|Version|-|L",
                                    "Album Performer|Album_Artist_Name|-|L",
                                    "Item|Item|-|R",
                                    "Index|Index|-|R"};

TEST(GridColumns, EveryKindHasItsColumnsInOrder) {
    EXPECT_EQ(describeKind("overview"),
              (QStringList{"Compilation Title|c_name|-|L", "Storage|c_box|-|L",
                           "Track #|c_sumtrack|-|R", "Total Time|c_sumtime|T|C",
                           "Format|c_format|-|D", "Manufacturer|Manufacturer|-|D",
                           "Rec. Date|recdate|-|C", "Length|c_length|-|R", "Notes|c_notes|-|L"}));
    EXPECT_EQ(
        describeKind("compilation"),
        (QStringList{"Track|TrackNo|-|R", "Track Performer|Track_Artist_Name|-|L",
                     "Track Title|Track_Title|-|L", "Time|Length|T|C", "Recorded|RecordedStart|-|C",
                     "Live|Live|Y|C", "Album Title|Album_Title|-|L", "Version|Version|-|L"}));
    EXPECT_EQ(
        describeKind("get_source"),
        (QStringList{"Track Performer|PerformerTrack|-|L", "Track Title|TitleTrack|-|L",
                     "Time|Length|T|C", "Recorded|MyRecorded|-|C", "Live|Live|Y|C",
                     "Version|Version|-|L", "Rating|RatingTrack|-|L", "Album Title|TitleAlbum|-|L",
                     "Album Performer|PerformerAlbum|-|L", "Item|Item|-|R", "Index|Index|-|R"}));
    EXPECT_EQ(describeKind("get_target"), kTargetColumns);
    EXPECT_EQ(describeKind("rearrange"), kTargetColumns);
    EXPECT_EQ(describeKind("track"),
              (QStringList{"Compilation Title|Name|-|L", "Track #|TrackNo|-|R", "Storage|Box|-|L",
                           "Format|Format|-|L", "Manufacturer|Manufacturer|-|L",
                           "Rec. Date|RecDate|-|C"}));
}

TEST(GridColumns, KindsAreCaseBlindAndUnknownKindsHaveNone) {
    EXPECT_EQ(store::gridColumns("Overview"), store::gridColumns("overview"));
    EXPECT_EQ(store::gridColumns("browser"), nullptr);
    EXPECT_EQ(store::gridColumns(""), nullptr);
}

// A layout as text, one entry per setting, with system colours named by their role.
QString colourText(const store::GridColour& colour) {
    if (const auto* role = std::get_if<QPalette::ColorRole>(&colour)) {
        switch (*role) {
            case QPalette::Highlight:
                return "highlight";
            case QPalette::HighlightedText:
                return "highlight-text";
            case QPalette::ToolTipBase:
                return "info-background";
            case QPalette::ButtonText:
                return "button-text";
            default:
                return QStringLiteral("role %1").arg(int(*role));
        }
    }
    return std::get<QColor>(colour).name();
}

struct SettingText {
    QString operator()(const store::BaseBackground& s) { return "base " + colourText(s.colour); }
    QString operator()(const store::RowHeight& s) {
        return QStringLiteral("height %1").arg(s.twips);
    }
    QString operator()(const store::AlternateRowBackground& s) {
        return "alternate " + colourText(s.colour);
    }
    QString operator()(const store::HighlightColours& s) {
        return "selected " + colourText(s.background) + " on " + colourText(s.text);
    }
    QString operator()(const store::ColumnAlign& s) {
        return QStringLiteral("align %1 %2").arg(s.column).arg(QChar("DLRC"[int(s.alignment)]));
    }
    QString operator()(const store::Appearance& s) {
        return s.look == store::GridAppearance::ThreeD ? "3d" : "flat";
    }
    QString operator()(const store::ColumnForeground& s) {
        return QStringLiteral("colour %1 ").arg(s.column) + colourText(s.colour);
    }
};

QStringList describe(const GridLayout& layout) {
    QStringList out;
    for (const auto& setting : layout.settings) {
        out << std::visit(SettingText{}, setting);
    }
    return out;
}

const QStringList kFewColours = {"base #ffffff", "height 250", "alternate #ffffff",
                                 "selected highlight on highlight-text"};
const QStringList kManyColours = {"base #ffffff", "height 250", "alternate #e0e0e0",
                                  "selected info-background on button-text"};

TEST(GridLayout, ColourSetFollowsColourDepth) {
    EXPECT_EQ(describe(store::gridLayout("nothing", 2)), kFewColours);
    EXPECT_EQ(describe(store::gridLayout("nothing", 256)), kFewColours);
    EXPECT_EQ(describe(store::gridLayout("nothing", 257)), kManyColours);
    EXPECT_EQ(describe(store::gridLayout("nothing", 16777216)), kManyColours);
}

TEST(GridLayout, OverviewAlignsItsColumnsThenLooksRaised) {
    const QStringList expected =
        kManyColours + QStringList{"align 0 L", "align 1 L", "align 2 R", "align 3 C",
                                   "align 4 D", "align 5 D", "align 6 C", "align 7 R",
                                   "align 8 L", "3d",        "height 300"};
    EXPECT_EQ(describe(store::gridLayout("overview", 65536)), expected);
}

TEST(GridLayout, CompilationAlsoAlignsANinthColumnItLacks) {
    const QStringList expected =
        kFewColours + QStringList{"align 0 R", "align 1 L", "align 2 L", "align 3 C", "align 4 C",
                                  "align 5 C", "align 6 L", "align 7 L", "align 8 L", "flat"};
    EXPECT_EQ(describe(store::gridLayout("compilation", 256)), expected);
    EXPECT_EQ(store::gridColumns("compilation")->size(), 8u);
}

TEST(GridLayout, AppearanceAndExtrasByKind) {
    auto tail = [](const char* kind) {
        const QStringList all = describe(store::gridLayout(kind, 65536));
        const auto columns = store::gridColumns(kind)->size();
        return all.mid(kManyColours.size() + columns);
    };
    EXPECT_EQ(tail("get_source"), QStringList{"3d"});
    EXPECT_EQ(tail("get_target"), QStringList{"flat"});
    EXPECT_EQ(tail("track"), QStringList{"flat"});
    EXPECT_EQ(tail("rearrange"), (QStringList{"flat", "height 300", "colour 0 #ff0000"}));
}

}  // namespace
