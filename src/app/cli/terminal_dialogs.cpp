#include "cli/terminal_dialogs.h"

#include <unistd.h>

#include <QElapsedTimer>

namespace cli {

namespace {

class TerminalProgress : public platform::Progress {
  public:
    TerminalProgress(QTextStream& err, const QString& title) : err_(err), title_(title) {}
    ~TerminalProgress() override {
        if (!shownWidth_) {
            return;
        }
        err_ << '\r' << QString(shownWidth_, QLatin1Char(' ')) << '\r';
        err_.flush();
    }
    void report(const QString& line) override {
        if (shown_.isValid() && shown_.elapsed() < 200) {
            return;
        }
        shown_.start();
        const QString text = title_ + QStringLiteral(": ") + line;
        // Clears what a longer line before left; \r keeps it on one line.
        err_ << '\r' << text.leftJustified(shownWidth_, QLatin1Char(' '));
        err_.flush();
        shownWidth_ = int(text.size());
    }
    bool cancelled() const override { return false; }  // Ctrl+C ends the program

  private:
    QTextStream& err_;
    QString title_;
    QElapsedTimer shown_;
    int shownWidth_ = 0;
};

class SilentProgress : public platform::Progress {
  public:
    void report(const QString&) override {}
    bool cancelled() const override { return false; }
};

}  // namespace

std::unique_ptr<platform::Progress> TerminalDialogs::startProgress(const QString& title) {
    if (!terminal_) {
        return std::make_unique<SilentProgress>();
    }
    return std::make_unique<TerminalProgress>(err_, title);
}

bool errorIsTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

}  // namespace cli
