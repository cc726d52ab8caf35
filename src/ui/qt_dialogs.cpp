#include "ui/qt_dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QMessageBox>

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

// A new database gets the filter's extension when the name has none.
QString withDatabaseExtension(const QString& path) {
    return QFileInfo(path).suffix().isEmpty() ? path + QStringLiteral(".mdb") : path;
}

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

void setUpMessageBox(QMessageBox& box, const platform::MessageRequest& request) {
    box.setIcon(iconOf(request.icon));
    box.setWindowTitle(request.title);
    box.setText(request.text);
    box.setStandardButtons(buttonsOf(request.buttons));
    box.setDefaultButton(buttonOf(request.defaultAnswer));
}

platform::MessageAnswer QtDialogs::message(const platform::MessageRequest& request) {
    QMessageBox box(parent_);
    setUpMessageBox(box, request);
    return answerOf(box.exec());
}

std::optional<QString> QtDialogs::openFile(const platform::FileRequest& request) {
    QFileDialog dialog(parent_, request.title, request.initialFolder);
    dialog.setNameFilters(qtNameFilters(request.filter));
    const QStringList filters = dialog.nameFilters();
    if (request.filterIndex >= 1 && request.filterIndex <= filters.size()) {
        dialog.selectNameFilter(filters[request.filterIndex - 1]);
    }
    dialog.setFileMode(request.mayNotExist ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
    dialog.setOption(QFileDialog::ReadOnly, true);
    if (!request.fileName.isEmpty()) {
        dialog.selectFile(request.fileName);
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    const QString chosen = dialog.selectedFiles().first();
    return request.mayNotExist ? withDatabaseExtension(chosen) : chosen;
}

std::optional<QString> QtDialogs::saveFile(const platform::FileRequest& request) {
    const QStringList filters = qtNameFilters(request.filter);
    QString selectedFilter = filters.value(request.filterIndex - 1);
    const QString start = request.fileName.isEmpty()
                              ? request.initialFolder
                              : QDir(request.initialFolder).filePath(request.fileName);
    // The commands refuse an existing file themselves and say why; the dialog need not ask.
    const QString chosen = QFileDialog::getSaveFileName(
        parent_, request.title, start, filters.join(QStringLiteral(";;")), &selectedFilter,
        QFileDialog::DontConfirmOverwrite);
    if (chosen.isEmpty()) {
        return std::nullopt;
    }
    return withDatabaseExtension(chosen);
}

std::optional<QFont> QtDialogs::chooseFont(const platform::FontRequest& request) {
    bool accepted = false;
    QFont font = QFontDialog::getFont(&accepted, request.initial, parent_, request.title,
                                      QFontDialog::ScalableFonts);
    if (!accepted) {
        return std::nullopt;
    }
    // The desktop dialog offers every size; one outside the range is brought into it.
    font.setPointSizeF(platform::limitPointSize(font.pointSizeF(), request));
    return font;
}

}  // namespace ui
