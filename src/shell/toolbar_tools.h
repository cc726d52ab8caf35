#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace shell {

// One tool of the main toolbar, addressed by its id ("ID_NewFile", ...).
struct ToolSpec {
    QString id;
    QString caption;
    QString category;
    QString description;
    bool isDropDown = false;  // the report type list
};

// The tools in toolbar order.
const std::vector<ToolSpec>& mainTools();

// The report types of the print tool's list, in list order; a loaded database selects
// kDefaultReportType.
const QStringList& reportTypes();
inline constexpr int kDefaultReportType = 2;  // "SEL - Recording Protocol"

// What a tool click does, by the lower-cased id.
enum class ToolCommand {
    NewDatabase,
    OpenDatabase,
    CloseDatabase,
    CompactDatabase,
    Print,
    NewCompilation,
    EditCompilation,
    DeleteCompilation,
    Help,
    Exit,
    Unknown
};
ToolCommand commandForTool(const QString& toolId);
extern const QString kUnexpectedToolError;
// A tool meant for the current compilation finds it gone: another program deleted it.
extern const QString kCompilationGone;

// Tools that follow whether a database is open: enabled when open, and the reverse.
const QStringList& toolsForOpenDatabase();
const QStringList& toolsForClosedDatabase();
// Tools that need at least one compilation in the list.
const QStringList& toolsForRows();

}  // namespace shell
