#pragma once

#include <QLine>
#include <QRect>
#include <QString>
#include <QVector>
#include <functional>
#include <memory>

#include "report_engine/page_model.h"
#include "report_engine/rows.h"

// A banded report: sections that print once (report header and footer), on every page (page
// header and footer), at each change of a group's field (group headers and footers) and once per
// row (detail). Each section holds controls placed in twips from the section's top-left corner
// (left is counted from the left margin); a format step and a before-print step may change them.
namespace report_engine {

class SectionFormat;
struct ReportDefinition;

enum class ControlKind { TextBox, Label, Line, Rectangle, RichText, SubReport };

// A text box's text, computed from the row and the page.
using TextExpression = std::function<QString(const SectionFormat&)>;
// The rows of a sub-report for one row of its parent.
using SubReportRows = std::function<std::shared_ptr<const RowSource>(const RowView& parent)>;

struct Control {
    ControlKind kind = ControlKind::Label;
    QString name;
    QRect rect;  // twips; a line uses line instead
    QLine line;
    // Text boxes show field's value, or expression's result, or text. Labels and rich text show
    // text; a rich text bound to a field reads the field as RTF (or plain text).
    QString text;
    QString field;
    TextExpression expression;
    ReportFont font;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
    bool wordWrap = true;
    bool clip = true;
    bool canGrow = false;    // the box grows to its text's height and pushes what is below down
    bool canShrink = false;  // shrinks to its text's height (to nothing when empty or hidden)
    bool visible = true;
    int angle = 0;  // labels: tenths of a degree, counter-clockwise
    QColor color = Qt::black;
    QColor fill;
    int penWidth = 15;  // lines and rectangles, twips
    std::shared_ptr<const ReportDefinition> subReport;
    SubReportRows subReportRows;
};

Control textBox(const QString& name, const QRect& rect, const QString& field, ReportFont font = {});
Control textBox(const QString& name, const QRect& rect, TextExpression expression,
                ReportFont font = {});
Control label(const QString& name, const QRect& rect, const QString& caption, ReportFont font = {});
Control line(const QString& name, const QLine& line, int penWidth = 15);
Control rectangle(const QString& name, const QRect& rect, int penWidth = 15, QColor fill = {});
Control richText(const QString& name, const QRect& rect, const QString& field);
Control subReport(const QString& name, const QRect& rect,
                  std::shared_ptr<const ReportDefinition> definition, SubReportRows rows);

struct Section {
    QString name;
    int height = 0;  // twips; a section of height 0 without controls prints nothing
    bool visible = true;
    bool canGrow = true;        // grows with its controls
    bool keepTogether = false;  // starts a new page rather than being split
    QVector<Control> controls;
    // Format runs before the texts are measured: it may change texts, fonts, places, hide
    // controls or cancel the section. Before-print runs after the measuring, with the controls'
    // grown boxes and the section's height; what it changes is what prints.
    std::function<void(SectionFormat&)> onFormat;
    std::function<void(SectionFormat&)> onBeforePrint;

    bool prints() const { return visible && (height > 0 || !controls.isEmpty()); }
};

Section section(const QString& name, int height, QVector<Control> controls = {});

// Group headers print before the first row of each run of rows with an equal field value (text
// compared without regard to case), group footers after its last row. Groups nest in the order
// given, the first one outermost.
struct Group {
    QString field;
    Section header;
    Section footer;
    bool keepWithFirstDetail = true;  // the header never ends a page on its own
    bool repeatHeader = false;        // the header prints again on a page the group continues on
};

struct ReportDefinition {
    QString name;
    PageSetup page;
    Section reportHeader;
    Section pageHeader;  // heads every page; its height is fixed
    QVector<Group> groups;
    Section detail;
    Section pageFooter;  // ends every page; its height is fixed
    Section reportFooter;
};

// What a format or before-print step sees and may change.
class SectionFormat {
  public:
    enum class Step { Format, BeforePrint };

    SectionFormat(const Section& section, QVector<Control> controls, RowView row, int pageNumber,
                  int pageCount);

    const Section& section() const { return section_; }
    Step step() const { return step_; }
    const RowView& row() const { return row_; }
    QVariant value(const QString& field) const { return row_.value(field); }
    int pageNumber() const { return pageNumber_; }
    // The number of pages, known in page headers and footers only (ReportError elsewhere).
    int pageCount() const;

    Control& control(const QString& name);  // ReportError for a name the section lacks
    const Control& control(const QString& name) const;
    QVector<Control>& controls() { return controls_; }
    const QVector<Control>& controls() const { return controls_; }

    int height() const { return height_; }
    void setHeight(int twips) { height_ = twips; }
    void cancel() { cancelled_ = true; }
    bool cancelled() const { return cancelled_; }
    // Draws on the page where the section prints, in twips from the paper's top-left corner.
    void drawOnPage(PageItem item) { pageItems_.append(std::move(item)); }
    const QVector<PageItem>& pageItems() const { return pageItems_; }

    void setStep(Step step) { step_ = step; }

  private:
    int indexOf(const QString& name) const;

    const Section& section_;
    QVector<Control> controls_;
    RowView row_;
    int pageNumber_;
    int pageCount_;  // 0: not known
    int height_;
    Step step_ = Step::Format;
    bool cancelled_ = false;
    QVector<PageItem> pageItems_;
};

}  // namespace report_engine
