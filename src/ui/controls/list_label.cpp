#include "ui/controls/list_label.h"

#include <QComboBox>
#include <QLabel>

namespace ui {

void labelList(QComboBox& list, const QString& name) {
    list.setAccessibleName(name);
    auto* label = new QLabel(name, list.parentWidget());
    label->setObjectName(list.objectName() + QStringLiteral("Label"));
    label->setBuddy(&list);
    label->hide();
}

}  // namespace ui
