#pragma once

#include <QColor>
#include <QPalette>
#include <QString>
#include <variant>
#include <vector>

#include "query/columns.h"

namespace store {

// Default keeps the grid's own alignment.
enum class ColumnAlignment { Default, Left, Right, Centre };

// A grid column: caption, field and kind come from the column catalogue; the kind decides how
// the stored value is shown (query::valueText).
struct GridColumnSpec {
    QString caption;
    QString dataField;
    query::ValueKind kind = query::ValueKind::Text;
    ColumnAlignment alignment = ColumnAlignment::Default;
};

// The grids: the main window's compilation list, the browser's tracks, the track picker's source
// and target, the rearranging grid and the track lookup's compilations.
enum class GridKind { Overview, Compilation, GetSource, GetTarget, Rearrange, Track };

// The fixed columns of a grid kind, in index order.
const std::vector<GridColumnSpec>& gridColumns(GridKind kind);

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
// kind's own extras.
GridLayout gridLayout(GridKind kind, double colourCount);

}  // namespace store
