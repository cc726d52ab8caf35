#include "ui/qt_dialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QMessageBox>

namespace ui {

namespace {

QMessageBox::Icon iconOf(platform::MessageIcon icon) {
    switch (icon) {
        case platform::MessageIcon::Information: return QMessageBox::Information;
        case platform::MessageIcon::Question: return QMessageBox::Question;
        case platform::MessageIcon::Exclamation: return QMessageBox::Warning;
        case platform::MessageIcon::Critical: return QMessageBox::Critical;
        case platform::MessageIcon::None: break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttonsOf(platform::MessageButtons buttons) {
    switch (buttons) {
        case platform::MessageButtons::Ok: return QMessageBox::Ok;
        case platform::MessageButtons::OkCancel: return QMessageBox::Ok | QMessageBox::Cancel;
        case platform::MessageButtons::YesNo: return QMessageBox::Yes | QMessageBox::No;
        case platform::MessageButtons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton buttonOf(platform::MessageAnswer answer) {
    switch (answer) {
        case platform::MessageAnswer::Ok: return QMessageBox::Ok;
        case platform::MessageAnswer::Cancel: return QMessageBox::Cancel;
        case platform::MessageAnswer::Yes: return QMessageBox::Yes;
        case platform::MessageAnswer::No: return QMessageBox::No;
    }
    return QMessageBox::Ok;
}

platform::MessageAnswer answerOf(int button) {
    switch (button) {
        case QMessageBox::Cancel: return platform::MessageAnswer::Cancel;
        case QMessageBox::Yes: return platform::MessageAnswer::Yes;
        case QMessageBox::No: return platform::MessageAnswer::No;
        default: return platform::MessageAnswer::Ok;
    }
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

platform::MessageAnswer QtDialogs::message(const platform::MessageRequest& request) {
    QMessageBox box(iconOf(request.icon), request.title, request.text, buttonsOf(request.buttons),
                    parent_);
    box.setDefaultButton(buttonOf(request.defaultAnswer));
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
    QString chosen = dialog.selectedFiles().first();
    if (request.mayNotExist && QFileInfo(chosen).suffix().isEmpty()) {
        chosen += QStringLiteral(".mdb");  // a new database gets the filter's extension
    }
    return chosen;
}

std::optional<QFont> QtDialogs::chooseFont(const QString& title, const QFont& initial) {
    bool accepted = false;
    const QFont font = QFontDialog::getFont(&accepted, initial, parent_, title);
    return accepted ? std::optional<QFont>(font) : std::nullopt;
}

}  // namespace ui
