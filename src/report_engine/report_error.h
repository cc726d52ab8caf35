#pragma once

#include <QString>
#include <stdexcept>

namespace report_engine {

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

// A page model that could not be written to its file (a read-only file or folder, a full disk,
// a file held open by another program).
class WriteError : public ReportError {
  public:
    WriteError(const QString& description, const QString& reason)
        : ReportError(description), reason_(reason) {}
    // The cause alone, as the system names it ("No space left on device").
    const QString& reason() const { return reason_; }

  private:
    QString reason_;
};

}  // namespace report_engine
