#include "ui/qt_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QGridLayout>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>

namespace ui {

namespace {

QMessageBox::Icon iconOf(platform::MessageIcon icon) {
    switch (icon) {
        case platform::MessageIcon::Information:
            return QMessageBox::Information;
        case platform::MessageIcon::Question:
            return QMessageBox::Question;
        case platform::MessageIcon::Exclamation:
            return QMessageBox::Warning;
        case platform::MessageIcon::Critical:
            return QMessageBox::Critical;
        case platform::MessageIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttonsOf(platform::MessageButtons buttons) {
    switch (buttons) {
        case platform::MessageButtons::Ok:
            return QMessageBox::Ok;
        case platform::MessageButtons::OkCancel:
            return QMessageBox::Ok | QMessageBox::Cancel;
        case platform::MessageButtons::YesNo:
            return QMessageBox::Yes | QMessageBox::No;
        case platform::MessageButtons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton buttonOf(platform::MessageAnswer answer) {
    switch (answer) {
        case platform::MessageAnswer::Ok:
            return QMessageBox::Ok;
        case platform::MessageAnswer::Cancel:
            return QMessageBox::Cancel;
        case platform::MessageAnswer::Yes:
            return QMessageBox::Yes;
        case platform::MessageAnswer::No:
            return QMessageBox::No;
    }
    return QMessageBox::Ok;
}

platform::MessageAnswer answerOf(int button) {
    switch (button) {
        case QMessageBox::Cancel:
            return platform::MessageAnswer::Cancel;
        case QMessageBox::Yes:
            return platform::MessageAnswer::Yes;
        case QMessageBox::No:
            return platform::MessageAnswer::No;
        default:
            return platform::MessageAnswer::Ok;
    }
}

// A name without an extension gets the chosen filter's first one ("*.mdb" gives ".mdb").
QString withFilterExtension(const QString& path, const QString& nameFilter) {
    static const QRegularExpression firstPattern(QStringLiteral("\\*\\.(\\w+)"));
    const QRegularExpressionMatch match = firstPattern.match(nameFilter);
    return QFileInfo(path).suffix().isEmpty() && match.hasMatch()
               ? path + QLatin1Char('.') + match.captured(1)
               : path;
}

// The result of a file dialog whose folder button was pressed.
constexpr int kFolderWanted = 2;

// A button under the file list asks for a folder instead (a music folder for an album file);
// the folder is then chosen in a folder dialog of its own.
void offerFolderChoice(QFileDialog& dialog, const QString& caption) {
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    auto* grid = qobject_cast<QGridLayout*>(dialog.layout());
    if (grid == nullptr) {
        return;
    }
    auto* button = new QPushButton(QStringLiteral("&%1...").arg(caption), &dialog);
    button->setObjectName(QStringLiteral("btnChooseFolder"));
    button->setAutoDefault(false);
    grid->addWidget(button, grid->rowCount(), 0, 1, grid->columnCount(), Qt::AlignLeft);
    QObject::connect(button, &QPushButton::clicked, &dialog,
                     [&dialog] { static_cast<QDialog&>(dialog).done(kFolderWanted); });
}

class ProgressDialog : public platform::Progress {
  public:
    ProgressDialog(QWidget* parent, const QString& title) : dialog_(parent) {
        dialog_.setWindowTitle(title);
        dialog_.setMinimumWidth(380);  // the title and a line of counts in full
        dialog_.setWindowModality(Qt::WindowModal);
        dialog_.setRange(0, 0);  // no end known: the line tells how far it is
        dialog_.setMinimumDuration(400);
        dialog_.setAutoClose(false);
        dialog_.setAutoReset(false);
        dialog_.setValue(0);
    }
    void report(const QString& line) override {
        if (shown_.isValid() && shown_.elapsed() < 100) {
            return;  // a file at a time is more often than anyone can read
        }
        shown_.start();
        dialog_.setLabelText(line);
        dialog_.setValue(0);
        QCoreApplication::processEvents();
    }
    bool cancelled() const override { return dialog_.wasCanceled(); }

  private:
    QProgressDialog dialog_;
    QElapsedTimer shown_;
};

}  // namespace

QStringList qtNameFilters(const QString& filter) {
    const QStringList parts = platform::splitFilter(filter);
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns = parts[i + 1].split(';').join(' ');
        filters << (parts[i].contains('(') ? parts[i] : parts[i] + " (" + patterns + ")");
    }
    return filters;
}

// The window the user works in owns the dialog, so that closing the dialog returns to it rather
// than raising the main window over it.
QWidget* QtDialogs::owner() const {
    QWidget* active = QApplication::activeWindow();
    return active != nullptr ? active : parent_.data();
}

std::unique_ptr<platform::Progress> QtDialogs::startProgress(const QString& title) {
    return std::make_unique<ProgressDialog>(owner(), title);
}

void setUpMessageBox(QMessageBox& box, const platform::MessageRequest& request) {
    box.setDetailedText(request.details);
    box.setIcon(iconOf(request.icon));
    box.setWindowTitle(request.title);
    box.setText(request.text);
    box.setStandardButtons(buttonsOf(request.buttons));
    box.setDefaultButton(buttonOf(request.defaultAnswer));
}

platform::MessageAnswer QtDialogs::message(const platform::MessageRequest& request) {
    QMessageBox box(owner());
    setUpMessageBox(box, request);
    return answerOf(box.exec());
}

std::optional<QString> QtDialogs::openFile(const platform::FileRequest& request) {
    QFileDialog dialog(owner(), request.title, request.initialFolder);
    dialog.setNameFilters(qtNameFilters(request.filter));
    const QStringList filters = dialog.nameFilters();
    if (request.filterIndex >= 1 && request.filterIndex <= filters.size()) {
        dialog.selectNameFilter(filters[request.filterIndex - 1]);
    }
    dialog.setFileMode(request.mayNotExist ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (!request.folderChoice.isEmpty()) {
        offerFolderChoice(dialog, request.folderChoice);
    }
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
    dialog.setOption(QFileDialog::ReadOnly, true);
    if (!request.fileName.isEmpty()) {
        dialog.selectFile(request.fileName);
    }
    const int result = dialog.exec();
    if (result == kFolderWanted) {
        const QString folder = QFileDialog::getExistingDirectory(
            owner(), request.folderChoice, dialog.directory().absolutePath(),
            QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
        return folder.isEmpty() ? std::nullopt : std::optional<QString>(folder);
    }
    if (result != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    const QString chosen = dialog.selectedFiles().first();
    return request.mayNotExist ? withFilterExtension(chosen, dialog.selectedNameFilter()) : chosen;
}

std::optional<QString> QtDialogs::saveFile(const platform::FileRequest& request) {
    const QStringList filters = qtNameFilters(request.filter);
    QString selectedFilter = filters.value(request.filterIndex - 1);
    const QString start = request.fileName.isEmpty()
                              ? request.initialFolder
                              : QDir(request.initialFolder).filePath(request.fileName);
    // The commands refuse an existing file themselves and say why; the dialog need not ask.
    const QString chosen = QFileDialog::getSaveFileName(
        owner(), request.title, start, filters.join(QStringLiteral(";;")), &selectedFilter,
        QFileDialog::DontConfirmOverwrite);
    if (chosen.isEmpty()) {
        return std::nullopt;
    }
    return withFilterExtension(chosen, selectedFilter);
}

std::optional<QFont> QtDialogs::chooseFont(const platform::FontRequest& request) {
    bool accepted = false;
    QFont font = QFontDialog::getFont(&accepted, request.initial, owner(), request.title,
                                      QFontDialog::ScalableFonts);
    if (!accepted) {
        return std::nullopt;
    }
    // The desktop dialog offers every size; one outside the range is brought into it.
    font.setPointSizeF(platform::limitPointSize(font.pointSizeF(), request));
    return font;
}

}  // namespace ui
