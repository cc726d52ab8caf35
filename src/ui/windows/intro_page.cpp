#include "ui/windows/intro_page.h"

#include <QBoxLayout>
#include <QLabel>

#include "platform/program_folder.h"
#include "shell/navigation.h"

namespace ui {

QWidget* buildIntroPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QHBoxLayout(page);
    auto* introImage = new QLabel(page);
    introImage->setObjectName(QStringLiteral("imgIntro"));
    introImage->setFixedSize(shell::twipsToPixels(5850), shell::twipsToPixels(5200));
    introImage->setScaledContents(true);
    introImage->setPixmap(QPixmap(platform::programFolder() + QStringLiteral("/Intro-Image.bmp")));
    auto* texts = new QVBoxLayout;
    auto* appNameTop = new QLabel(QStringLiteral("Add-on for\r\nAlbumory 98/2000"), page);
    appNameTop->setObjectName(QStringLiteral("lblAppName_Top"));
    auto* appNameBottom = new QLabel(page);
    appNameBottom->setObjectName(QStringLiteral("lblAppName_Bottom"));
    appNameBottom->setWordWrap(true);
    appNameBottom->setText(QStringLiteral("Version 1.0"));
    const QColor shadow = page->palette().color(QPalette::Dark);
    for (auto [label, size] : {std::pair{appNameTop, 14}, std::pair{appNameBottom, 10}}) {
        QFont font = label->font();
        font.setPointSize(size);
        label->setFont(font);
        label->setStyleSheet(QStringLiteral("color: %1").arg(shadow.name()));
        label->setFixedWidth(shell::twipsToPixels(3500));
    }
    texts->addStretch(1);
    texts->addWidget(appNameTop);
    texts->addStretch(3);
    texts->addWidget(appNameBottom);
    texts->addStretch(1);
    layout->addStretch(1);
    layout->addWidget(introImage);
    layout->addSpacing(shell::twipsToPixels(150));
    layout->addLayout(texts);
    layout->addStretch(1);
    return page;
}

}  // namespace ui
