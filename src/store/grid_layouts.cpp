#include "store/grid_layouts.h"

#include "store/screen_colours.h"

namespace store {

namespace {

using A = ColumnAlignment;
using query::ColumnSet;

const QRgb kWhite = 0xFFFFFF;
const QColor kLightGrey(224, 224, 224);
const QColor kRed(255, 0, 0);
// Rows are 250 twips high; the compilation list and the rearranging grid use 300.
const int kRowTwips = 250;
const int kTallRowTwips = 300;

// A grid's column: a field of the catalogue's set and its alignment.
struct Placed {
    const char* field;
    ColumnAlignment alignment;
};

std::vector<GridColumnSpec> gridOf(ColumnSet set, std::initializer_list<Placed> placed) {
    std::vector<GridColumnSpec> grid;
    for (const Placed& column : placed) {
        const query::Column* known = query::findColumn(set, QLatin1String(column.field));
        grid.push_back({known->caption, known->field, known->kind, column.alignment});
    }
    return grid;
}

std::vector<GridColumnSpec> overview() {
    return gridOf(ColumnSet::Compilations, {{"c_name", A::Left},
                                            {"c_box", A::Left},
                                            {"c_sumtrack", A::Right},
                                            {"c_sumtime", A::Centre},
                                            {"c_format", A::Default},
                                            {"Manufacturer", A::Default},
                                            {"recdate", A::Centre},
                                            {"c_length", A::Right},
                                            {"c_notes", A::Left}});
}

std::vector<GridColumnSpec> compilation() {
    return gridOf(ColumnSet::CompilationTracks, {{"TrackNo", A::Right},
                                                 {"Track_Artist_Name", A::Left},
                                                 {"Track_Title", A::Left},
                                                 {"Length", A::Centre},
                                                 {"RecordedStart", A::Centre},
                                                 {"Live", A::Centre},
                                                 {"Album_Title", A::Left},
                                                 {"Version", A::Left}});
}

std::vector<GridColumnSpec> source() {
    return gridOf(ColumnSet::Source, {{"PerformerTrack", A::Left},
                                      {"TitleTrack", A::Left},
                                      {"Length", A::Centre},
                                      {"MyRecorded", A::Centre},
                                      {"Live", A::Centre},
                                      {"Version", A::Left},
                                      {"RatingTrack", A::Left},
                                      {"TitleAlbum", A::Left},
                                      {"PerformerAlbum", A::Left},
                                      {"Item", A::Right},
                                      {"Index", A::Right}});
}

// The grid of the compilation being filled and the rearranging grid.
std::vector<GridColumnSpec> targetTracks() {
    return gridOf(ColumnSet::CompilationTracks, {{"TrackNo", A::Right},
                                                 {"Track_Artist_Name", A::Left},
                                                 {"Track_Title", A::Left},
                                                 {"Length", A::Centre},
                                                 {"RecordedStart", A::Centre},
                                                 {"Album_Title", A::Left},
                                                 {"Live", A::Centre},
                                                 {"Version", A::Left},
                                                 {"Album_Artist_Name", A::Left},
                                                 {"Item", A::Right},
                                                 {"Index", A::Right}});
}

std::vector<GridColumnSpec> track() {
    return gridOf(ColumnSet::TrackLookup, {{"Name", A::Left},
                                           {"TrackNo", A::Right},
                                           {"Box", A::Left},
                                           {"Format", A::Left},
                                           {"Manufacturer", A::Left},
                                           {"RecDate", A::Centre}});
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

void addAlignments(std::vector<GridSetting>& settings, GridKind kind) {
    const std::vector<GridColumnSpec>& columns = gridColumns(kind);
    for (int i = 0; i < int(columns.size()); ++i) {
        settings.push_back(ColumnAlign{i, columns[i].alignment});
    }
    // The browser's track grid shares its alignment list with the target grids, whose ninth
    // column it lacks; the grid skips that request.
    if (kind == GridKind::Compilation) {
        settings.push_back(ColumnAlign{8, A::Left});
    }
}

void addKindExtras(std::vector<GridSetting>& settings, GridKind kind) {
    const bool raised = kind == GridKind::Overview || kind == GridKind::GetSource;
    settings.push_back(Appearance{raised ? GridAppearance::ThreeD : GridAppearance::Flat});
    if (kind == GridKind::Overview || kind == GridKind::Rearrange) {
        settings.push_back(RowHeight{kTallRowTwips});
    }
    if (kind == GridKind::Rearrange) {
        settings.push_back(ColumnForeground{0, kRed});
    }
}

}  // namespace

const std::vector<GridColumnSpec>& gridColumns(GridKind kind) {
    static const std::vector<GridColumnSpec> kOverview = overview();
    static const std::vector<GridColumnSpec> kCompilation = compilation();
    static const std::vector<GridColumnSpec> kSource = source();
    static const std::vector<GridColumnSpec> kTarget = targetTracks();
    static const std::vector<GridColumnSpec> kTrack = track();
    switch (kind) {
        case GridKind::Overview:
            return kOverview;
        case GridKind::Compilation:
            return kCompilation;
        case GridKind::GetSource:
            return kSource;
        case GridKind::GetTarget:
        case GridKind::Rearrange:
            return kTarget;
        case GridKind::Track:
            break;
    }
    return kTrack;
}

QColor resolveColour(const GridColour& colour, const QPalette& systemPalette) {
    if (const auto* role = std::get_if<QPalette::ColorRole>(&colour)) {
        return systemPalette.color(*role);
    }
    return std::get<QColor>(colour);
}

GridLayout gridLayout(GridKind kind, double colourCount) {
    GridLayout layout;
    auto& settings = layout.settings;
    settings.push_back(BaseBackground{QColor(kWhite)});
    settings.push_back(RowHeight{kRowTwips});
    addColourSet(settings, colourCount);
    addAlignments(settings, kind);
    addKindExtras(settings, kind);
    return layout;
}

}  // namespace store
