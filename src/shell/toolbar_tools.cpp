#include "shell/toolbar_tools.h"

#include <map>

namespace shell {

const QString kUnexpectedToolError = QStringLiteral("Ooops! Unexpected Error from ToolBarsMain");
const QString kCompilationGone = QStringLiteral(
    "This compilation is no longer in the database. Another program may have deleted it.");

const std::vector<ToolSpec>& mainTools() {
    static const std::vector<ToolSpec> tools{
        {"ID_NewFile", "Create New Database", "File", "Creates a new document."},
        {"ID_OpenFile", "Open Database", "File", "Opens an existing document."},
        {"ID_CloseFile", "Close Database", "File", "Closes the active document."},
        {"ID_CompactDB", "Compact Database", "General", ""},
        {"ID_EditCompilation", "Edit Compilation", "General", ""},
        {"ID_NewCompilation", "Add New Compilation", "General", ""},
        {"ID_DeleteCompilation", "Delete Compilation", "General", ""},
        {"ID_Print", "Print", "File", "Prints the selected text to the default printer."},
        {"ID_PrintWhat", "Report Type", "File", "Prints the selected text to the default printer.",
         true},
        {"ID_Help", "Help", "General", ""},
        {"ID_Exit", "Exit", "File", "Exits the application."},
    };
    return tools;
}

const QStringList& reportTypes() {
    static const QStringList types{
        "ALL - List of Tracks by Performer", "SEL - List of Tracks",
        "SEL - Recording Protocol",          "SEL - Cover",
        "ALL - List of Tracks > PDF",        "SEL - List of Tracks > PDF"};
    return types;
}

ToolCommand commandForTool(const QString& toolId) {
    static const std::map<QString, ToolCommand> commands{
        {"id_newfile", ToolCommand::NewDatabase},
        {"id_openfile", ToolCommand::OpenDatabase},
        {"id_closefile", ToolCommand::CloseDatabase},
        {"id_compactdb", ToolCommand::CompactDatabase},
        {"id_print", ToolCommand::Print},
        {"id_newcompilation", ToolCommand::NewCompilation},
        {"id_editcompilation", ToolCommand::EditCompilation},
        {"id_deletecompilation", ToolCommand::DeleteCompilation},
        {"id_help", ToolCommand::Help},
        {"id_exit", ToolCommand::Exit},
    };
    const auto it = commands.find(toolId.toLower());
    return it == commands.end() ? ToolCommand::Unknown : it->second;
}

const QStringList& toolsForOpenDatabase() {
    static const QStringList tools{"ID_CloseFile",      "ID_Print",
                                   "ID_PrintWhat",      "ID_EditCompilation",
                                   "ID_NewCompilation", "ID_DeleteCompilation"};
    return tools;
}

const QStringList& toolsForClosedDatabase() {
    static const QStringList tools{"ID_OpenFile", "ID_NewFile", "ID_CompactDB"};
    return tools;
}

const QStringList& toolsForRows() {
    static const QStringList tools{"ID_EditCompilation", "ID_DeleteCompilation", "ID_Print",
                                   "ID_PrintWhat"};
    return tools;
}

}  // namespace shell
