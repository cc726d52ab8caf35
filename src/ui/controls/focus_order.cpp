#include "ui/controls/focus_order.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QMainWindow>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <algorithm>
#include <array>

namespace ui {

namespace {

bool takesTab(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget.focusProxy() == nullptr;
}

// A layout item's place in reading order.
struct Placed {
    std::array<int, 4> key;  // band of rows, side of a spanning control, row, column
    QLayoutItem* item;
};

// Rows joined by a control that spans them form one band; a spanning control splits its band
// into what lies left of it and what lies from it to the right.
void placeGridItems(QGridLayout& grid, QList<Placed>& placed) {
    struct Cell {
        int row, column, rowSpan, columnSpan;
    };
    QList<Cell> cells;
    for (int i = 0; i < grid.count(); ++i) {
        Cell cell{};
        grid.getItemPosition(i, &cell.row, &cell.column, &cell.rowSpan, &cell.columnSpan);
        cells.append(cell);
    }
    for (int i = 0; i < cells.size(); ++i) {
        int band = cells[i].row;
        int side = 0;
        for (const Cell& spanning : cells) {
            const bool joins = spanning.rowSpan > 1 && spanning.row <= cells[i].row &&
                               cells[i].row < spanning.row + spanning.rowSpan;
            if (joins) {
                band = std::min(band, spanning.row);
                side += spanning.column <= cells[i].column ? 1 : 0;
            }
        }
        placed.append({{band, side, cells[i].row, cells[i].column}, grid.itemAt(i)});
    }
}

QList<QLayoutItem*> itemsInOrder(QLayout& layout) {
    QList<Placed> placed;
    if (auto* grid = qobject_cast<QGridLayout*>(&layout)) {
        placeGridItems(*grid, placed);
    } else {
        auto* form = qobject_cast<QFormLayout*>(&layout);
        for (int i = 0; i < layout.count(); ++i) {
            int row = i;
            QFormLayout::ItemRole role = QFormLayout::LabelRole;
            if (form != nullptr) {
                form->getItemPosition(i, &row, &role);
            }
            placed.append({{0, 0, row, int(role)}, layout.itemAt(i)});
        }
    }
    std::stable_sort(placed.begin(), placed.end(),
                     [](const Placed& a, const Placed& b) { return a.key < b.key; });
    QList<QLayoutItem*> items;
    for (const Placed& entry : placed) {
        items.append(entry.item);
    }
    return items;
}

void addLayoutParts(QLayout& layout, QList<QWidget*>& parts) {
    for (QLayoutItem* item : itemsInOrder(layout)) {
        if (item->widget() != nullptr) {
            parts.append(item->widget());
        } else if (item->layout() != nullptr) {
            addLayoutParts(*item->layout(), parts);
        }
    }
}

// The child widgets of a widget in reading order; children outside its layout follow in the
// order they were made.
QList<QWidget*> partsInOrder(QWidget& widget) {
    QList<QWidget*> parts;
    if (auto* main = qobject_cast<QMainWindow*>(&widget)) {
        for (QToolBar* bar : main->findChildren<QToolBar*>(Qt::FindDirectChildrenOnly)) {
            parts.append(bar);
        }
        parts.append(main->centralWidget());
    } else if (auto* bar = qobject_cast<QToolBar*>(&widget)) {
        for (QAction* action : bar->actions()) {
            parts.append(bar->widgetForAction(action));
        }
    } else if (auto* splitter = qobject_cast<QSplitter*>(&widget)) {
        for (int i = 0; i < splitter->count(); ++i) {
            parts.append(splitter->widget(i));
        }
    } else if (auto* pages = qobject_cast<QStackedWidget*>(&widget)) {
        for (int i = 0; i < pages->count(); ++i) {
            parts.append(pages->widget(i));
        }
    } else if (widget.layout() != nullptr) {
        addLayoutParts(*widget.layout(), parts);
    }
    parts.append(widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
    parts.removeAll(nullptr);
    return parts;
}

void addChain(QWidget& widget, QList<QWidget*>& chain) {
    for (QWidget* part : partsInOrder(widget)) {
        if (part->isWindow() || chain.contains(part)) {
            continue;
        }
        if (takesTab(*part)) {
            chain.append(part);
        } else {
            addChain(*part, chain);
        }
    }
}

}  // namespace

QList<QWidget*> focusChainByLayout(QWidget& window) {
    QList<QWidget*> chain;
    addChain(window, chain);
    return chain;
}

void orderFocusByLayout(QWidget& window) {
    const QList<QWidget*> chain = focusChainByLayout(window);
    for (qsizetype i = 1; i < chain.size(); ++i) {
        QWidget::setTabOrder(chain[i - 1], chain[i]);
    }
}

}  // namespace ui
