#include "ui/controls/panel_status_bar.h"

namespace ui {

PanelStatusBar::PanelStatusBar(QWidget* parent)
    : QStatusBar(parent), left_(new QLabel(this)), right_(new QLabel(this)) {
    left_->setObjectName(QStringLiteral("panel1"));
    right_->setObjectName(QStringLiteral("panel2"));
    left_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    right_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    left_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    addWidget(left_, 1);
    addWidget(right_, 1);
    setSizeGripEnabled(true);
    setSimpleText(QString());
}

void PanelStatusBar::setSimpleText(const QString& text) {
    simpleText_ = text;
    simpleMode_ = true;
    left_->hide();
    right_->hide();
    showMessage(text);
    repaint();
}

void PanelStatusBar::showPanels() {
    simpleMode_ = false;
    clearMessage();
    left_->show();
    right_->show();
    repaint();
}

QLabel* PanelStatusBar::panel(int number) const {
    return number == 1 ? left_ : right_;
}

void PanelStatusBar::setPanelText(int number, const QString& text) {
    panel(number)->setText(text);
}

QString PanelStatusBar::panelText(int number) const {
    return panel(number)->text();
}

}  // namespace ui
