#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "report_engine/report_error.h"
#include "reports/cover_source.h"
#include "reports/list_reports.h"

namespace engine {
class Database;
}

// The print tool: what each entry of its report type list produces, and the checks made
// before anything is produced.
namespace shell {

enum class PrintOutput { Preview, Cover, Pdf };

struct PrintChoice {
    int index = 0;
    QString entry;  // as the report type list shows it
    PrintOutput output = PrintOutput::Preview;
    reports::ListReport report = reports::ListReport::TracksCompilation;  // not for the cover
    bool allCompilations = false;
    QString pdfFileName;  // in the program's data folder
};

// The six choices in list order; index i is the list's entry i.
const std::vector<PrintChoice>& printChoices();
// The choice at a list index; nothing for an index outside the list.
const PrintChoice* printChoice(int index);

// The compilation under the main list's cursor, as its row shows it.
struct CurrentCompilation {
    qint64 id = 0;
    int trackCount = 0;
    QString format;
};

inline const QString kNoTracksAnywhere = QStringLiteral("No compilation contains any tracks");
using reports::kNoTracksOnCompilation;
inline const QString kPdfWriteError =
    QStringLiteral("Cannot write to PDF file. May be it is open?");
// kPdfWriteError with the cause under it ("No space left on device").
QString pdfWriteMessage(const report_engine::WriteError& error);

// The information message that refuses the choice, in the order the checks are made, or
// nothing when the choice may be produced. The lists of all compilations look for any track in
// the database; the others read the current compilation (none counts as one without tracks).
std::optional<QString> printRefusal(engine::Database& database, const PrintChoice& choice,
                                    const std::optional<CurrentCompilation>& current);

// How the cover viewer first shows a compilation's cover: its caption and its zoom in percent
// (none: the page fits the window). Nothing for a format without a cover.
struct CoverView {
    QString caption;
    std::optional<int> zoomPercent;
};
std::optional<CoverView> coverView(const QString& format);

// Where a PDF choice is written: the data folder of the program folder.
QString pdfPath(const PrintChoice& choice);

}  // namespace shell
