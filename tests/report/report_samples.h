#pragma once

#include <QSizeF>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <utility>

#include "report/page_model.h"
#include "report/report_definition.h"
#include "report/rows.h"
#include "support/document_summary.h"  // failure messages show texts as text

// Small reports and ways to read their pages.
namespace reporttest {

// Paper of 12000 by 10000 twips with margins of 1000: a printable area 10000 wide and 8000 tall.
report::PageSetup smallPaper();

report::RowTable table(const QStringList& fields, const QVector<QVector<QVariant>>& rows);

// The footer the lists use: "Page N of" beside the page count.
report::Section pageNumberFooter(int height);

// The items a control left on a page, top to bottom.
QVector<report::PageItem> itemsNamed(const report::Page& page, const QString& name);
QStringList textsNamed(const report::Page& page, const QString& name);
// Every text on a page, top to bottom and left to right.
QStringList textsOf(const report::Page& page);
// The page index (0-based) of the first item showing the text, -1 when none does.
int pageOf(const report::PageModel& model, const QString& text);
// The one item showing the text on any page; fails the test when there is not exactly one.
report::PageItem onlyItem(const report::PageModel& model, const QString& text);

// The standard output of a program that must succeed (pdftotext, pdfinfo).
QString runProgram(const QString& program, const QStringList& arguments);
// The page size pdfinfo reads (points), and the paper name it gives that size.
std::pair<QSizeF, QString> pdfPageSize(const QString& path);

}  // namespace reporttest
