#include "report_engine/section_layout.h"

#include <QTextDocument>
#include <algorithm>
#include <numeric>
#include <optional>

#include "report_engine/text_measure.h"

namespace report_engine {

void translate(PageItem& item, int dx, int dy) {
    item.rect.translate(dx, dy);
    item.line.translate(dx, dy);
}

void translate(QVector<PageItem>& items, int dx, int dy) {
    for (PageItem& item : items) {
        translate(item, dx, dy);
    }
}

namespace {

struct Span {
    int top = 0;
    int bottom = 0;
};

Span spanOf(const Control& control) {
    if (control.kind == ControlKind::Line) {
        return {qMin(control.line.y1(), control.line.y2()),
                qMax(control.line.y1(), control.line.y2())};
    }
    return {control.rect.top(), control.rect.top() + control.rect.height()};
}

Span spanOf(const PageItem& item) {
    if (item.kind == ItemKind::Line) {
        return {qMin(item.line.y1(), item.line.y2()), qMax(item.line.y1(), item.line.y2())};
    }
    return {item.rect.top(), item.rect.top() + item.rect.height()};
}

void bindTexts(SectionFormat& format) {
    for (Control& control : format.controls()) {
        if (control.expression) {
            control.text = control.expression(format);
        } else if (!control.field.isEmpty()) {
            const QVariant value = format.value(control.field);
            control.text = value.isNull() ? QString() : value.toString();
        }
    }
}

int totalHeight(const QVector<Block>& blocks) {
    return std::accumulate(blocks.begin(), blocks.end(), 0,
                           [](int sum, const Block& block) { return sum + block.height; });
}

// The height a control's content needs.
int neededHeight(const Control& control, const QVector<Block>* subBlocks) {
    switch (control.kind) {
        case ControlKind::TextBox:
        case ControlKind::Label:
            if (control.angle != 0) {
                return control.rect.height();
            }
            return textHeight(control.font, control.text, control.rect.width(), control.wordWrap);
        case ControlKind::RichText:
            return documentHeight(*richDocument(control.text, control.rect.width()));
        case ControlKind::SubReport:
            return subBlocks ? totalHeight(*subBlocks) : 0;
        case ControlKind::Line:
        case ControlKind::Rectangle:
            break;
    }
    return spanOf(control).bottom - spanOf(control).top;
}

// Content is measured only for boxes that may change height: most controls keep theirs, and
// measuring text is most of a long report's layout time.
int fittedHeight(const Control& control, const QVector<Block>* subBlocks) {
    const int designed = spanOf(control).bottom - spanOf(control).top;
    if (control.kind == ControlKind::Line) {
        return designed;
    }
    if (control.kind == ControlKind::SubReport) {
        return control.visible ? neededHeight(control, subBlocks) : 0;
    }
    if (!control.visible) {
        return control.canShrink ? 0 : designed;
    }
    if (!control.canGrow && !control.canShrink) {
        return designed;
    }
    const int needed = neededHeight(control, subBlocks);
    if ((needed > designed && control.canGrow) || (needed < designed && control.canShrink)) {
        return needed;
    }
    return designed;
}

// Controls that grow push down the controls below them (those starting at or under their
// designed bottom edge) by what they grew, and so on down; the section follows its lowest
// control. Shrinking works the same way upwards.
void growControls(SectionFormat& format, const QHash<QString, QVector<Block>>& subBlocks) {
    QVector<Control>& controls = format.controls();
    const int count = int(controls.size());
    QVector<Span> designed(count);
    QVector<int> growth(count);
    for (int i = 0; i < count; ++i) {
        const Control& control = controls[i];
        designed[i] = spanOf(control);
        const auto blocks = subBlocks.find(control.name);
        const int fitted =
            fittedHeight(control, blocks == subBlocks.end() ? nullptr : &blocks.value());
        growth[i] = fitted - (designed[i].bottom - designed[i].top);
    }
    QVector<int> order(count);
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return designed[a].top < designed[b].top; });
    QVector<int> shift(count, 0);
    std::optional<int> lowestEdgeMove;
    for (int i : order) {
        std::optional<int> move;
        for (int j : order) {
            if (j == i || designed[j].bottom > designed[i].top ||
                designed[j].top > designed[i].top) {
                continue;
            }
            move = qMax(move.value_or(shift[j] + growth[j]), shift[j] + growth[j]);
        }
        shift[i] = move.value_or(0);
        lowestEdgeMove = qMax(lowestEdgeMove.value_or(shift[i] + growth[i]), shift[i] + growth[i]);
    }
    for (int i = 0; i < count; ++i) {
        Control& control = controls[i];
        if (control.kind == ControlKind::Line) {
            control.line.translate(0, shift[i]);
        } else {
            control.rect.translate(0, shift[i]);
            control.rect.setHeight(control.rect.height() + growth[i]);
        }
    }
    const int edgeMove = lowestEdgeMove.value_or(0);
    const Section& section = format.section();
    if (edgeMove > 0 && section.canGrow) {
        format.setHeight(format.height() + edgeMove);
    }
}

std::optional<PageItem> itemOf(const Control& control) {
    if (!control.visible || control.kind == ControlKind::SubReport) {
        return std::nullopt;
    }
    PageItem item;
    item.name = control.name;
    item.rect = control.rect;
    item.line = control.line;
    item.color = control.color;
    item.fill = control.fill;
    item.penWidth = control.penWidth;
    switch (control.kind) {
        case ControlKind::Line:
            item.kind = ItemKind::Line;
            return item;
        case ControlKind::Rectangle:
            item.kind = ItemKind::Rectangle;
            return item;
        case ControlKind::RichText:
            item.kind = ItemKind::RichText;
            item.document = richDocument(control.text, control.rect.width());
            return item;
        default:
            break;
    }
    if (control.text.isEmpty() && !control.fill.isValid()) {
        return std::nullopt;
    }
    item.kind = ItemKind::Text;
    item.text = control.text;
    item.font = control.font;
    item.alignment = control.alignment;
    item.wordWrap = control.wordWrap;
    item.clip = control.clip;
    item.angle = control.angle;
    return item;
}

// A sub-report's block placed in the section.
struct Placed {
    Block block;
    int top = 0;
};

// Cut positions: the edges of sub-report blocks that nothing else straddles, plus both ends.
QVector<int> cutsOf(const QVector<PageItem>& items, const QVector<Placed>& placed, int end) {
    auto straddled = [&](int y) {
        for (const PageItem& item : items) {
            const Span span = spanOf(item);
            if (span.top < y && y < span.bottom) {
                return true;
            }
        }
        for (const Placed& p : placed) {
            if (p.top < y && y < p.top + p.block.height) {
                return true;
            }
        }
        return false;
    };
    QVector<int> cuts{0, end};
    for (const Placed& p : placed) {
        for (int y : {p.top, p.top + p.block.height}) {
            if (y > 0 && y < end && !straddled(y)) {
                cuts.append(y);
            }
        }
    }
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
    return cuts;
}

int pieceOf(const QVector<int>& cuts, int top) {
    const auto after = std::upper_bound(cuts.begin(), cuts.end() - 1, top);
    return qMax(0, int(after - cuts.begin()) - 1);
}

QVector<Block> cutIntoBlocks(const SectionFormat& format,
                             const QHash<QString, QVector<Block>>& subBlocks, int row) {
    QVector<PageItem> items;
    QVector<Placed> placed;
    int end = format.height();
    for (const Control& control : format.controls()) {
        if (auto item = itemOf(control)) {
            items.append(std::move(*item));
        }
        const auto blocks = subBlocks.find(control.name);
        if (control.kind != ControlKind::SubReport || !control.visible ||
            blocks == subBlocks.end()) {
            continue;
        }
        int top = control.rect.top();
        for (Block block : blocks.value()) {
            translate(block.items, control.rect.left(), 0);
            placed.append({std::move(block), top});
            top += placed.last().block.height;
        }
        end = qMax(end, top);
    }
    const QVector<int> cuts = cutsOf(items, placed, end);
    QVector<Block> pieces(cuts.size() - 1);
    for (int k = 0; k < pieces.size(); ++k) {
        pieces[k].height = cuts[k + 1] - cuts[k];
        pieces[k].row = row;
    }
    for (PageItem& item : items) {
        const int k = pieceOf(cuts, spanOf(item).top);
        translate(item, 0, -cuts[k]);
        pieces[k].items.append(std::move(item));
    }
    for (Placed& p : placed) {
        const int k = pieceOf(cuts, p.top);
        translate(p.block.items, 0, p.top - cuts[k]);
        pieces[k].items += p.block.items;
        pieces[k].pageItems += p.block.pageItems;
        if (p.top + p.block.height == cuts[k + 1]) {
            pieces[k].keepWithNext = p.block.keepWithNext;
        }
    }
    pieces.first().pageItems = format.pageItems() + pieces.first().pageItems;
    pieces.removeIf(
        [](const Block& b) { return b.height == 0 && b.items.isEmpty() && b.pageItems.isEmpty(); });
    return pieces;
}

}  // namespace

QVector<Block> layoutSection(const Section& section, const SectionContext& context,
                             const SubReportRunner& runSubReport) {
    if (!section.prints()) {
        return {};
    }
    SectionFormat format(section, section.controls, context.row, context.pageNumber,
                         context.pageCount);
    bindTexts(format);
    if (section.onFormat) {
        section.onFormat(format);
    }
    if (format.cancelled()) {
        return {};
    }
    QHash<QString, QVector<Block>> subBlocks;
    for (const Control& control : format.controls()) {
        if (control.kind == ControlKind::SubReport && control.visible && control.subReport) {
            subBlocks.insert(control.name, runSubReport(control, context.row));
        }
    }
    growControls(format, subBlocks);
    format.setStep(SectionFormat::Step::BeforePrint);
    if (section.onBeforePrint) {
        section.onBeforePrint(format);
    }
    if (format.cancelled()) {
        return {};
    }
    QVector<Block> blocks = cutIntoBlocks(format, subBlocks, context.row.index());
    if (blocks.isEmpty()) {
        return blocks;
    }
    if (section.keepTogether) {
        for (int i = 0; i + 1 < blocks.size(); ++i) {
            blocks[i].keepWithNext = true;
        }
    }
    return blocks;
}

Block stacked(const QVector<Block>& blocks) {
    Block all;
    for (const Block& block : blocks) {
        QVector<PageItem> items = block.items;
        translate(items, 0, all.height);
        all.items += items;
        all.pageItems += block.pageItems;
        all.height += block.height;
        all.row = block.row;
    }
    return all;
}

}  // namespace report_engine
