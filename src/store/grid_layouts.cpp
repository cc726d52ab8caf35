#include "store/grid_layouts.h"

#include <map>

#include "store/screen_colours.h"

namespace store {

namespace {

using F = ColumnFormat;
using A = ColumnAlignment;

const QRgb kWhite = 0xFFFFFF;
const QColor kLightGrey(224, 224, 224);
const QColor kRed(255, 0, 0);
// Rows are 250 twips high; the compilation list and the rearranging grid use 300.
const int kRowTwips = 250;
const int kTallRowTwips = 300;

const std::vector<GridColumnSpec> kOverview = {
    {"Compilation Title", "c_name", F::None, A::Left},
    {"Storage", "c_box", F::None, A::Left},
    {"Track #", "c_sumtrack", F::None, A::Right},
    {"Total Time", "c_sumtime", F::FormatTextEvent, A::Centre},
    {"Format", "c_format", F::None, A::Default},
    {"Manufacturer", "Manufacturer", F::None, A::Default},
    {"Rec. Date", "recdate", F::None, A::Centre},
    {"Length", "c_length", F::None, A::Right},
    {"Notes", "c_notes", F::None, A::Left},
};

const std::vector<GridColumnSpec> kCompilation = {
    {"Track", "TrackNo", F::None, A::Right},
    {"Track Performer", "Track_Artist_Name", F::None, A::Left},
    {"Track Title", "Track_Title", F::None, A::Left},
    {"Time", "Length", F::FormatTextEvent, A::Centre},
    {"Recorded", "RecordedStart", F::None, A::Centre},
    {"Live", "Live", F::YesNo, A::Centre},
    {"Album Title", "Album_Title", F::None, A::Left},
    {"Version", "Version", F::None, A::Left},
};

const std::vector<GridColumnSpec> kGetSource = {
    {"Track Performer", "PerformerTrack", F::None, A::Left},
    {"Track Title", "TitleTrack", F::None, A::Left},
    {"Time", "Length", F::FormatTextEvent, A::Centre},
    {"Recorded", "MyRecorded", F::None, A::Centre},
    {"Live", "Live", F::YesNo, A::Centre},
    {"Version", "Version", F::None, A::Left},
    {"Rating", "RatingTrack", F::None, A::Left},
    {"Album Title", "TitleAlbum", F::None, A::Left},
    {"Album Performer", "PerformerAlbum", F::None, A::Left},
    {"Item", "Item", F::None, A::Right},
    {"Index", "Index", F::None, A::Right},
};

// The grid of the compilation being filled and the rearranging grid.
const std::vector<GridColumnSpec> kTargetTracks = {
    {"Track", "TrackNo", F::None, A::Right},
    {"Track Performer", "Track_Artist_Name", F::None, A::Left},
    {"Track Title", "Track_Title", F::None, A::Left},
    {"Time", "Length", F::FormatTextEvent, A::Centre},
    {"Recorded", "RecordedStart", F::None, A::Centre},
    {"Album Title", "Album_Title", F::None, A::Left},
    {"Live", "Live", F::YesNo, A::Centre},
    {"Version", "Version", F::None, A::Left},
    {"Album Performer", "Album_Artist_Name", F::None, A::Left},
    {"Item", "Item", F::None, A::Right},
    {"Index", "Index", F::None, A::Right},
};

const std::vector<GridColumnSpec> kTrack = {
    {"Compilation Title", "Name", F::None, A::Left},
    {"Track #", "TrackNo", F::None, A::Right},
    {"Storage", "Box", F::None, A::Left},
    {"Format", "Format", F::None, A::Left},
    {"Manufacturer", "Manufacturer", F::None, A::Left},
    {"Rec. Date", "RecDate", F::None, A::Centre},
};

const std::map<QString, const std::vector<GridColumnSpec>*>& columnsByKind() {
    static const std::map<QString, const std::vector<GridColumnSpec>*> kinds = {
        {"overview", &kOverview},       {"compilation", &kCompilation}, {"get_source", &kGetSource},
        {"get_target", &kTargetTracks}, {"rearrange", &kTargetTracks},  {"track", &kTrack},
    };
    return kinds;
}

void addColourSet(std::vector<GridSetting>& settings, double colourCount) {
    if (hasFewColours(colourCount)) {
        settings.push_back(AlternateRowBackground{QColor(kWhite)});
        settings.push_back(HighlightColours{QPalette::Highlight, QPalette::HighlightedText});
    } else {
        settings.push_back(AlternateRowBackground{kLightGrey});
        settings.push_back(HighlightColours{QPalette::ToolTipBase, QPalette::ButtonText});
    }
}

void addAlignments(std::vector<GridSetting>& settings, const QString& kind,
                   const std::vector<GridColumnSpec>& columns) {
    for (int i = 0; i < int(columns.size()); ++i) {
        settings.push_back(ColumnAlign{i, columns[i].alignment});
    }
    // The browser's track grid shares its alignment list with the target grids, whose ninth
    // column it lacks; the grid skips that request.
    if (kind == QLatin1String("compilation")) {
        settings.push_back(ColumnAlign{8, A::Left});
    }
}

void addKindExtras(std::vector<GridSetting>& settings, const QString& kind) {
    const bool raised = kind == QLatin1String("overview") || kind == QLatin1String("get_source");
    settings.push_back(Appearance{raised ? GridAppearance::ThreeD : GridAppearance::Flat});
    if (kind == QLatin1String("overview") || kind == QLatin1String("rearrange")) {
        settings.push_back(RowHeight{kTallRowTwips});
    }
    if (kind == QLatin1String("rearrange")) {
        settings.push_back(ColumnForeground{0, kRed});
    }
}

}  // namespace

const std::vector<GridColumnSpec>* gridColumns(const QString& kind) {
    const auto found = columnsByKind().find(kind.toLower());
    return found == columnsByKind().end() ? nullptr : found->second;
}

QColor resolveColour(const GridColour& colour, const QPalette& systemPalette) {
    if (const auto* role = std::get_if<QPalette::ColorRole>(&colour)) {
        return systemPalette.color(*role);
    }
    return std::get<QColor>(colour);
}

GridLayout gridLayout(const QString& kind, double colourCount) {
    GridLayout layout;
    auto& settings = layout.settings;
    settings.push_back(BaseBackground{QColor(kWhite)});
    settings.push_back(RowHeight{kRowTwips});
    addColourSet(settings, colourCount);
    const std::vector<GridColumnSpec>* columns = gridColumns(kind);
    if (columns == nullptr) {
        return layout;
    }
    const QString lower = kind.toLower();
    addAlignments(settings, lower, *columns);
    addKindExtras(settings, lower);
    return layout;
}

}  // namespace store
