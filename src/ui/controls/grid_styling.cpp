// The layouts of grid kinds and the split state, applied to a DataGrid (declared in data_grid.h).
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>

#include "ui/controls/data_grid.h"

namespace ui {

namespace {

const int kTwipsPerPixel = 15;

// Applies each setting of a layout; a setting for a column the grid lacks is skipped.
class LayoutApplier {
  public:
    explicit LayoutApplier(DataGrid& grid)
        : grid_(grid), system_(QApplication::palette(&grid)), palette_(grid.palette()) {}

    void finish() { grid_.setPalette(palette_); }

    void operator()(const store::BaseBackground& s) {
        const QColor colour = resolve(s.colour);
        palette_.setColor(QPalette::Base, colour);
        model().setRowColours(colour, model().alternateColour());
    }
    void operator()(const store::RowHeight& s) {
        grid_.verticalHeader()->setDefaultSectionSize(s.twips / kTwipsPerPixel);
    }
    void operator()(const store::AlternateRowBackground& s) {
        const QColor colour = resolve(s.colour);
        palette_.setColor(QPalette::AlternateBase, colour);
        grid_.setAlternatingRowColors(true);
        model().setRowColours(model().baseColour(), colour);
    }
    void operator()(const store::HighlightColours& s) {
        for (auto group : {QPalette::Active, QPalette::Inactive}) {
            palette_.setColor(group, QPalette::Highlight, resolve(s.background));
            palette_.setColor(group, QPalette::HighlightedText, resolve(s.text));
        }
    }
    void operator()(const store::ColumnAlign& s) {
        if (hasColumn(s.column)) {
            model().setColumnAlignment(s.column, s.alignment);
        }
    }
    void operator()(const store::Appearance& s) {
        const bool raised = s.look == store::GridAppearance::ThreeD;
        grid_.setFrameStyle(raised ? QFrame::StyledPanel | QFrame::Sunken
                                   : QFrame::Box | QFrame::Plain);
    }
    void operator()(const store::ColumnForeground& s) {
        if (hasColumn(s.column)) {
            model().setColumnForeground(s.column, resolve(s.colour));
        }
    }

  private:
    RecordsetModel& model() { return grid_.recordsetModel(); }
    bool hasColumn(int column) const { return column >= 0 && column < grid_.columnCount(); }
    QColor resolve(const store::GridColour& colour) const {
        return store::resolveColour(colour, system_);
    }

    DataGrid& grid_;
    QPalette system_;  // the desktop's colours, not the ones a former layout gave the grid
    QPalette palette_;
};

bool gSplitState = false;

}  // namespace

void setGridLayout(DataGrid& grid, store::GridKind kind, double colourCount) {
    LayoutApplier applier(grid);
    for (const store::GridSetting& setting : store::gridLayout(kind, colourCount).settings) {
        std::visit(applier, setting);
    }
    applier.finish();
}

void toggleSplitState(DataGrid& grid) {
    gSplitState = !gSplitState;
    grid.setShowGrid(true);
    if (!gSplitState) {
        grid.horizontalScrollBar()->setValue(0);
    }
}

bool splitState() {
    return gSplitState;
}

}  // namespace ui
