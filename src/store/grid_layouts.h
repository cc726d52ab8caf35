#pragma once

#include <QColor>
#include <QPalette>
#include <QString>
#include <variant>
#include <vector>

namespace store {

// How a grid column shows its stored value: as it is, through the window's cell-formatting
// hook (play times in seconds), or a yes/no field as the words "Yes" and "No".
enum class ColumnFormat { None, FormatTextEvent, YesNo };
// Default keeps the grid's own alignment.
enum class ColumnAlignment { Default, Left, Right, Centre };

struct GridColumnSpec {
    QString caption;
    QString dataField;
    ColumnFormat format = ColumnFormat::None;
    ColumnAlignment alignment = ColumnAlignment::Default;
};

// The fixed columns of a grid kind ("overview", "compilation", "get_source", "get_target",
// "rearrange", "track"; any case), in index order; nullptr for an unknown kind.
const std::vector<GridColumnSpec>* gridColumns(const QString& kind);

// A fixed colour, or one of the desktop's system colours resolved where the grid is shown.
using GridColour = std::variant<QColor, QPalette::ColorRole>;
QColor resolveColour(const GridColour& colour, const QPalette& systemPalette);

enum class GridAppearance { Flat, ThreeD };

// One setting of a grid layout. Settings that name a column may name one the grid lacks;
// the grid skips those.
struct BaseBackground {
    GridColour colour;
};
struct RowHeight {
    int twips = 0;
};
struct AlternateRowBackground {
    GridColour colour;
};
struct HighlightColours {
    GridColour background;
    GridColour text;
};
struct ColumnAlign {
    int column = 0;
    ColumnAlignment alignment = ColumnAlignment::Default;
};
struct Appearance {
    GridAppearance look = GridAppearance::Flat;
};
struct ColumnForeground {
    int column = 0;
    GridColour colour;
};
using GridSetting = std::variant<BaseBackground, RowHeight, AlternateRowBackground,
                                 HighlightColours, ColumnAlign, Appearance, ColumnForeground>;

struct GridLayout {
    std::vector<GridSetting> settings;  // applied in this order
};

// The look of a grid kind on a screen with colourCount colours: the common settings and the
// colour set of the colour depth first, then the column alignments, the appearance and the
// kind's own extras. An unknown kind gets only the common settings and colours.
GridLayout gridLayout(const QString& kind, double colourCount);

}  // namespace store
