#pragma once

#include <QColor>
#include <QLine>
#include <QPageLayout>
#include <QRect>
#include <QSize>
#include <QString>
#include <QVector>
#include <memory>

class QTextDocument;

// What a report looks like once laid out: pages of items placed in twips from the paper's
// top-left corner. Drawing, the preview and the tests all read this model; nothing in it depends
// on a printer or a screen.
namespace report_engine {

inline constexpr int kTwipsPerInch = 1440;
inline constexpr int kTwipsPerPoint = 20;

// A font as a layout names it; it resolves to a QFont only when text is measured or drawn.
struct ReportFont {
    QString family = QStringLiteral("Arial");
    double pointSize = 10;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool operator==(const ReportFont&) const = default;
};

enum class ItemKind { Text, RichText, Line, Rectangle };

// One thing drawn on a page. Which fields count depends on the kind:
// - Text: text in rect with font, alignment, wordWrap, clip and angle (tenths of a degree,
//   counter-clockwise: 900 reads upwards, -900 downwards; the box is the rotated text's frame).
// - RichText: document drawn at rect's top-left, wrapped at rect's width.
// - Line: line, with color and penWidth. Rectangle: rect with pen and fill.
struct PageItem {
    ItemKind kind = ItemKind::Text;
    QString name;  // the control it comes from, empty for drawings on the page itself
    QRect rect;    // twips
    QLine line;    // twips
    QString text;
    ReportFont font;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
    bool wordWrap = true;
    bool clip = true;
    int angle = 0;
    QColor color = Qt::black;
    QColor fill;        // invalid: transparent
    int penWidth = 15;  // twips; 0 draws no outline
    std::shared_ptr<const QTextDocument> document;
};

}  // namespace report_engine

// A page holds hundreds of items: growing its list moves them as bytes rather than one by one.
Q_DECLARE_TYPEINFO(report_engine::PageItem, Q_RELOCATABLE_TYPE);

namespace report_engine {

// Paper in twips: the portrait size, the orientation, and the margins around the printable area.
struct PageSetup {
    QSize paper{11906, 16838};
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    int leftMargin = 1440;
    int topMargin = 1440;
    int rightMargin = 1440;
    int bottomMargin = 1440;

    static PageSetup a4();
    static PageSetup letter();
    QSize size() const;  // as oriented
    QRect printable() const;
};

struct Page {
    QVector<PageItem> items;
};

struct PageModel {
    PageSetup setup;
    QVector<Page> pages;
};

}  // namespace report_engine
