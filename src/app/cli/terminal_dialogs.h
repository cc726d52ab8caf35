#pragma once

#include <QTextStream>

#include "platform/scripted_dialogs.h"

namespace cli {

// The command line's answers to the dialogs (queued as in a script), with the progress of long
// work on one line of the terminal. When the error stream is no terminal (a pipe, a file), the
// progress prints nothing.
class TerminalDialogs : public platform::ScriptedDialogs {
  public:
    TerminalDialogs(QTextStream& err, bool terminal) : err_(err), terminal_(terminal) {}
    std::unique_ptr<platform::Progress> startProgress(const QString& title) override;

  private:
    QTextStream& err_;
    bool terminal_;
};

// True when standard error is a terminal.
bool errorIsTerminal();

}  // namespace cli
