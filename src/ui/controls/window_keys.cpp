#include "ui/controls/window_keys.h"

#include <QDialog>
#include <QKeySequence>
#include <QShortcut>

namespace ui {

void closeWithKeys(QWidget& window) {
    QList<QKeySequence> keys{QKeySequence(Qt::CTRL | Qt::Key_W)};
    if (qobject_cast<QDialog*>(&window) == nullptr) {
        keys << QKeySequence(Qt::Key_Escape);
    }
    for (const QKeySequence& key : keys) {
        auto* shortcut = new QShortcut(key, &window);
        QObject::connect(shortcut, &QShortcut::activated, &window, &QWidget::close);
    }
}

}  // namespace ui
