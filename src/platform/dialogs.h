#pragma once

#include <QFont>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

namespace platform {

enum class MessageIcon { None, Information, Question, Exclamation, Critical };
enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MessageAnswer { Ok, Cancel, Yes, No };

struct MessageRequest {
    QString title;
    QString text;
    MessageIcon icon = MessageIcon::None;
    MessageButtons buttons = MessageButtons::Ok;
    MessageAnswer defaultAnswer = MessageAnswer::Ok;
    QString details{};  // shown on request (a long list); empty: none
};

struct FileRequest {
    QString title;
    QString filter;            // "MS Access Files (*.mdb)|*.mdb": description and pattern pairs
    int filterIndex = 1;       // 1-based, as the filter pairs are counted
    QString initialFolder;     // empty: the dialog's own choice
    QString fileName;          // preset file name
    bool mayNotExist = false;  // accept a name of a file that does not exist yet
    QString folderChoice{};    // when set, a button of this caption chooses a folder instead
};

struct FontRequest {
    QString title;
    QFont initial;
    int minPointSize = 0;  // 0: no lower limit
    int maxPointSize = 0;  // 0: no upper limit
};

// Long work shown to the user while it runs: a line that says how far it is, and a way to stop.
class Progress {
  public:
    virtual ~Progress() = default;
    // Called often: shows the line (now and then) and lets the window answer.
    virtual void report(const QString& line) = 0;
    virtual bool cancelled() const = 0;
};

// Every message box, file dialog and font dialog of the program goes through this interface,
// so that the logic can be driven by tests that answer by script.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    virtual MessageAnswer message(const MessageRequest& request) = 0;
    // The chosen file, or nothing when the user cancelled.
    virtual std::optional<QString> openFile(const FileRequest& request) = 0;
    // The name to save under (the file need not exist), or nothing when the user cancelled.
    virtual std::optional<QString> saveFile(const FileRequest& request) = 0;
    // The chosen font, or nothing when the user cancelled. Its size lies within the request's.
    virtual std::optional<QFont> chooseFont(const FontRequest& request) = 0;
    std::optional<QFont> chooseFont(const QString& title, const QFont& initial);
    // Shows the progress of long work until the returned object is destroyed.
    virtual std::unique_ptr<Progress> startProgress(const QString& title) = 0;

    // Shorthands for the program's standard messages, all titled "Mixorama".
    void exclamation(const QString& text);
    void information(const QString& text);
    bool askYesNo(const QString& text, MessageAnswer defaultAnswer = MessageAnswer::No);
};

inline const QString kAppTitle = QStringLiteral("Mixorama");

// A point size brought into the request's limits.
double limitPointSize(double points, const FontRequest& request);

// Splits "MS Access Files (*.mdb)|*.mdb" into its descriptions and patterns, alternating.
QStringList splitFilter(const QString& filter);

}  // namespace platform
