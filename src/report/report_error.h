#pragma once

#include <QString>
#include <stdexcept>

namespace report {

// A report that cannot be laid out (a control or field name it does not know) or written (a PDF
// file that cannot be created). The description is meant for the person who made the report.
class ReportError : public std::runtime_error {
  public:
    explicit ReportError(const QString& description)
        : std::runtime_error(description.toStdString()), description_(description) {}
    const QString& description() const { return description_; }

  private:
    QString description_;
};

}  // namespace report
