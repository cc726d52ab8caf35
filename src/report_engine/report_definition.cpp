#include "report_engine/report_definition.h"

#include "report_engine/report_error.h"

namespace report_engine {

namespace {

Control make(ControlKind kind, const QString& name, const QRect& rect, ReportFont font = {}) {
    Control control;
    control.kind = kind;
    control.name = name;
    control.rect = rect;
    control.font = std::move(font);
    return control;
}

}  // namespace

Control textBox(const QString& name, const QRect& rect, const QString& field, ReportFont font) {
    Control control = make(ControlKind::TextBox, name, rect, std::move(font));
    control.field = field;
    return control;
}

Control textBox(const QString& name, const QRect& rect, TextExpression expression,
                ReportFont font) {
    Control control = make(ControlKind::TextBox, name, rect, std::move(font));
    control.expression = std::move(expression);
    return control;
}

Control label(const QString& name, const QRect& rect, const QString& caption, ReportFont font) {
    Control control = make(ControlKind::Label, name, rect, std::move(font));
    control.text = caption;
    return control;
}

Control line(const QString& name, const QLine& line, int penWidth) {
    Control control = make(ControlKind::Line, name, {});
    control.line = line;
    control.penWidth = penWidth;
    return control;
}

Control rectangle(const QString& name, const QRect& rect, int penWidth, QColor fill) {
    Control control = make(ControlKind::Rectangle, name, rect);
    control.penWidth = penWidth;
    control.fill = fill;
    return control;
}

Control richText(const QString& name, const QRect& rect, const QString& field) {
    Control control = make(ControlKind::RichText, name, rect);
    control.field = field;
    return control;
}

Control subReport(const QString& name, const QRect& rect,
                  std::shared_ptr<const ReportDefinition> definition, SubReportRows rows) {
    Control control = make(ControlKind::SubReport, name, rect);
    control.subReport = std::move(definition);
    control.subReportRows = std::move(rows);
    return control;
}

Section section(const QString& name, int height, QVector<Control> controls) {
    Section result;
    result.name = name;
    result.height = height;
    result.controls = std::move(controls);
    return result;
}

SectionFormat::SectionFormat(const Section& section, QVector<Control> controls, RowView row,
                             int pageNumber, int pageCount)
    : section_(section),
      controls_(std::move(controls)),
      row_(row),
      pageNumber_(pageNumber),
      pageCount_(pageCount),
      height_(section.height) {}

int SectionFormat::pageCount() const {
    if (pageCount_ <= 0) {
        throw ReportError(
            QStringLiteral("The page count is known in page headers and footers only (section "
                           "\"%1\").")
                .arg(section_.name));
    }
    return pageCount_;
}

int SectionFormat::indexOf(const QString& name) const {
    for (int i = 0; i < controls_.size(); ++i) {
        if (controls_[i].name.compare(name, Qt::CaseInsensitive) == 0) {
            return i;
        }
    }
    throw ReportError(
        QStringLiteral("The section \"%1\" has no control \"%2\".").arg(section_.name, name));
}

Control& SectionFormat::control(const QString& name) {
    return controls_[indexOf(name)];
}

const Control& SectionFormat::control(const QString& name) const {
    return controls_[indexOf(name)];
}

}  // namespace report_engine
