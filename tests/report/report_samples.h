#pragma once

#include <QSizeF>
#include <QStringList>

#include "engine/database.h"
#include "report_engine/report_definition.h"
#include "support/document_summary.h"  // failure messages show texts as text
#include "support/temp_dir.h"

// Small reports, a compilation database to print covers from, and ways to read their pages.
namespace reporttest {

// Paper of 12000 by 10000 twips with margins of 1000: a printable area 10000 wide and 8000 tall.
report_engine::PageSetup smallPaper();
report_engine::RowTable table(const QStringList& fields, const QVector<QVector<QVariant>>& rows);
// The footer the lists use: "Page N of" beside the page count.
report_engine::Section pageNumberFooter(int height);

// The items of a control (texts when the name is null) top to bottom, their texts and tops.
QVector<report_engine::PageItem> itemsNamed(const report_engine::Page& page, const QString& name);
QStringList textsNamed(const report_engine::Page& page, const QString& name);
QStringList textsOf(const report_engine::Page& page);
QList<int> topsOf(const report_engine::Page& page, const QString& name);
// The page index of the first item showing the text, -1 when none does.
int pageOf(const report_engine::PageModel& model, const QString& text);
// The one item of a control on the only page (fails the test otherwise).
report_engine::PageItem onlyNamed(const report_engine::PageModel& model, const QString& name);
// What a cover drew on the page itself (frame, folds, rules), in drawing order.
QVector<report_engine::PageItem> drawings(const report_engine::PageModel& model);

// The standard output of a program that must succeed (pdftotext, pdfinfo), and the page size
// (points) and paper name pdfinfo reads.
QString runProgram(const QString& program, const QStringList& arguments);
std::pair<QSizeF, QString> pdfPageSize(const QString& path);

// Compilations "Road Songs", "Road Songs 2", ... of a format with a cover text, SumTime and a
// track by each performer, and their covers.
class CoverDatabase {
  public:
    CoverDatabase();
    qint64 addCompilation(const QString& format, const QString& coverMemo, qint64 sumTime = 600,
                          const QStringList& performers = {});
    report_engine::PageModel cover(qint64 id);
    report_engine::PageModel coverOf(const QString& format, const QString& memo,
                                     qint64 sumTime = 600) {
        return cover(addCompilation(format, memo, sumTime));
    }
    testsupport::TempDir dir;

  private:
    const QString path_ = dir.file("covers.mdb");
    engine::Database database_;
};

// A cover text as the editor stores it: RTF, lines in the font, each line's first word (its
// performer) bold, and the line break after the last line that composed texts end with.
QString composedRtf(const QStringList& lines, const QString& family = "Arial", double points = 10);
// "Performer1   Song number 1", ...
QStringList numberedLines(int count);

}  // namespace reporttest
