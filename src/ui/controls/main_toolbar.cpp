#include "ui/controls/main_toolbar.h"

#include <QAction>
#include <QShortcut>
#include <QStyle>
#include <QWidgetAction>

#include "shell/toolbar_tools.h"
#include "ui/controls/list_label.h"

namespace ui {

namespace {

QIcon iconFor(const QStyle* style, const QString& id) {
    static const QHash<QString, QStyle::StandardPixmap> icons{
        {"ID_NewFile", QStyle::SP_FileIcon},
        {"ID_OpenFile", QStyle::SP_DialogOpenButton},
        {"ID_CloseFile", QStyle::SP_DialogCloseButton},
        {"ID_CompactDB", QStyle::SP_DriveHDIcon},
        {"ID_EditCompilation", QStyle::SP_FileDialogDetailedView},
        {"ID_NewCompilation", QStyle::SP_FileDialogNewFolder},
        {"ID_DeleteCompilation", QStyle::SP_TrashIcon},
        {"ID_Print", QStyle::SP_FileDialogContentsView},
        {"ID_Help", QStyle::SP_DialogHelpButton},
        {"ID_Exit", QStyle::SP_DialogCancelButton},
    };
    const auto it = icons.find(id);
    return it == icons.end() ? QIcon() : style->standardIcon(it.value());
}

QKeySequence shortcutFor(const QString& id) {
    static const QHash<QString, QKeySequence> keys{
        {"ID_NewFile", QKeySequence::New},
        {"ID_OpenFile", QKeySequence::Open},
        {"ID_CloseFile", QKeySequence::Close},
        {"ID_CompactDB", QKeySequence(Qt::CTRL | Qt::Key_K)},
        {"ID_Print", QKeySequence::Print},
        {"ID_Help", QKeySequence::HelpContents},
        {"ID_Exit", QKeySequence(Qt::CTRL | Qt::Key_Q)},  // no standard key on every desktop
        {"ID_NewCompilation", QKeySequence(Qt::CTRL | Qt::Key_Insert)},
        {"ID_EditCompilation", QKeySequence(Qt::CTRL | Qt::Key_E)},
        {"ID_DeleteCompilation", QKeySequence(Qt::CTRL | Qt::Key_Delete)},
    };
    return keys.value(id);
}

// A tool's tip shows its key, as the tools themselves cannot take the focus.
QString withKey(const QString& caption, const QKeySequence& key) {
    return QStringLiteral("%1 (%2)").arg(caption, key.toString(QKeySequence::NativeText));
}

}  // namespace

MainToolBar::MainToolBar(QWidget* parent) : QToolBar(QStringLiteral("ToolBarMain"), parent) {
    setObjectName(QStringLiteral("SSActiveToolBarsMain"));
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setMovable(false);
    setIconSize(QSize(22, 22));
    // Eleven captioned tools and the report list fit a window of ordinary width.
    setStyleSheet(QStringLiteral("QToolButton { padding: 1px 3px; font-size: 8pt; }"));
    for (const shell::ToolSpec& tool : shell::mainTools()) {
        QAction* action = nullptr;
        if (tool.isDropDown) {
            reportTypes_ = new QComboBox(this);
            reportTypes_->setObjectName(tool.id);
            reportTypes_->addItems(shell::reportTypes());
            focusReportTypes(tool.caption);
            reportTypes_->setStatusTip(tool.description);
            reportTypes_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
            reportTypes_->setMinimumContentsLength(18);
            action = addWidget(reportTypes_);
        } else {
            action = addAction(iconFor(style(), tool.id), tool.caption);
            action->setShortcut(shortcutFor(tool.id));
            action->setToolTip(withKey(tool.caption, action->shortcut()));
            connect(action, &QAction::triggered, this,
                    [this, id = tool.id] { emit toolClicked(id); });
        }
        action->setObjectName(tool.id);
        action->setStatusTip(tool.description);
        action->setData(tool.category);
        actions_.insert(tool.id, action);
        if (tool.id == QLatin1String("ID_CompactDB") ||
            tool.id == QLatin1String("ID_DeleteCompilation") ||
            tool.id == QLatin1String("ID_PrintWhat")) {
            addSeparator();
        }
    }
}

// The list of report types has no caption to carry a mnemonic: a key of its own focuses it.
void MainToolBar::focusReportTypes(const QString& caption) {
    const QKeySequence key(Qt::CTRL | Qt::Key_R);
    labelList(*reportTypes_, caption);
    reportTypes_->setToolTip(withKey(caption, key));
    auto* shortcut = new QShortcut(key, reportTypes_);
    connect(shortcut, &QShortcut::activated, reportTypes_,
            [this] { reportTypes_->setFocus(Qt::ShortcutFocusReason); });
}

QAction* MainToolBar::tool(const QString& id) const {
    return actions_.value(id, nullptr);
}

void MainToolBar::setToolEnabled(const QString& id, bool enabled) {
    if (QAction* action = tool(id)) {
        action->setEnabled(enabled);
    }
    if (id == QLatin1String("ID_PrintWhat") && reportTypes_ != nullptr) {
        reportTypes_->setEnabled(enabled);
    }
}

bool MainToolBar::isToolEnabled(const QString& id) const {
    const QAction* action = tool(id);
    return action != nullptr && action->isEnabled();
}

void MainToolBar::clickTool(const QString& id) {
    if (QAction* action = tool(id); action != nullptr && action->isEnabled()) {
        action->trigger();
    }
}

}  // namespace ui
