#include "ui/windows/help_window.h"

#include <QTextBrowser>
#include <QVBoxLayout>

#include "platform/program_folder.h"
#include "ui/controls/focus_order.h"
#include "ui/controls/window_keys.h"

namespace ui {

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent), browser_(new QTextBrowser(this)) {
    setObjectName(QStringLiteral("helpWindow"));
    setWindowTitle(QStringLiteral("Mixorama Help"));
    setModal(false);
    browser_->setOpenExternalLinks(false);
    browser_->setAccessibleName(QStringLiteral("Help page"));
    browser_->setSearchPaths({platform::programFolder() + QStringLiteral("/help")});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(browser_);
    orderFocusByLayout(*this);
    resize(640, 520);
    closeWithKeys(*this);
}

void HelpWindow::showContents() {
    browser_->setSource(
        QUrl::fromLocalFile(platform::programFolder() + QStringLiteral("/help/index.html")));
    show();
    raise();
    activateWindow();
}

QString HelpWindow::currentPage() const {
    return browser_->source().fileName();
}

}  // namespace ui
