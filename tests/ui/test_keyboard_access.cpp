// Every window and dialog used with the keyboard alone and read by a screen reader: Tab walks
// every control in the order of the layout, every control has a name, mnemonics differ.

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QTextEdit>

#include "query/time_text.h"
#include "ui/windows/compilation_browser_window.h"
#include "ui/windows/cover_viewer.h"
#include "ui/windows/edit_compilation_window.h"
#include "ui/windows/filter_dialog.h"
#include "ui/windows/help_window.h"
#include "ui/windows/navigator_window.h"
#include "ui/windows/rearrange_window.h"
#include "ui/windows/report_preview_window.h"
#include "ui/windows/sort_dialog.h"
#include "ui/windows/track_lookup_window.h"
#include "window_fixture.h"

namespace {

using Controls = QList<QWidget*>;

QRect placeIn(const QWidget& window, const QWidget* control) {
    return QRect(window.mapFromGlobal(control->mapToGlobal(QPoint(0, 0))), control->size());
}

class KeyboardAccess : public PickerTest {
  protected:
    template <typename T>
    T* opened() const {
        return window->findChild<T*>();
    }
    // Of a group of options Tab reaches the chosen one.
    static bool isTabStop(const QWidget* control) {
        const auto* option = qobject_cast<const QRadioButton*>(control);
        const auto options = control->parentWidget()->findChildren<QRadioButton*>();
        return !option || option->isChecked() ||
               std::none_of(options.begin(), options.end(), [](auto* o) { return o->isChecked(); });
    }
    // The enabled, shown controls Tab should reach.
    static Controls tabControls(QWidget& shown) {
        Controls controls;
        for (QWidget* control : shown.findChildren<QWidget*>()) {
            if (control->window() == &shown && control->isVisible() && control->isEnabled() &&
                (control->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && !control->focusProxy() &&
                isTabStop(control)) {
                controls.append(control);
            }
        }
        return controls;
    }
    // The control holding the focus (an editable list for its text box).
    static QWidget* focused(const Controls& controls) {
        QWidget* widget = QApplication::focusWidget();
        while (widget != nullptr && !controls.contains(widget)) {
            widget = widget->parentWidget();
        }
        return widget;
    }
    // One Tab (or Shift+Tab); typed into a text box that takes it as text, the window's Tab.
    static void tab(QWidget& shown, QWidget* from, bool back) {
        const auto* text = qobject_cast<QTextEdit*>(from);
        QTest::keyClick(text && !text->tabChangesFocus() ? &shown : from, Qt::Key_Tab,
                        back ? Qt::ShiftModifier : Qt::NoModifier);
    }
    static Controls walk(QWidget& shown, const Controls& controls, bool back) {
        Controls walked{focused(controls)};
        for (qsizetype i = 1; i < controls.size() && walked.last() != nullptr; ++i) {
            tab(shown, walked.last(), back);
            walked.append(focused(controls));
        }
        tab(shown, walked.last() != nullptr ? walked.last() : &shown, back);
        EXPECT_EQ(focused(controls), walked.first()) << "the walk does not close";
        return walked;
    }
    static void expectLayoutOrder(QWidget& shown, const Controls& walked) {
        int wraps = 0;  // steps up and left: one, from the last control to the first
        for (qsizetype i = 0; i < walked.size(); ++i) {
            const QRect a = placeIn(shown, walked[i]);
            const QRect b = placeIn(shown, walked[(i + 1) % walked.size()]);
            wraps += b.top() >= a.top() || b.left() > a.right() ? 0 : 1;
        }
        EXPECT_LE(wraps, 1);
    }
    static QString valueOf(QWidget* control) {
        if (const auto* box = qobject_cast<QLineEdit*>(control)) {
            return box->text();
        }
        if (const auto* list = qobject_cast<QComboBox*>(control)) {
            return list->currentText();
        }
        const auto* view = qobject_cast<QAbstractItemView*>(control);
        return view ? view->currentIndex().data().toString() : QString();
    }
    // What a screen reader says a control is. Qt names a list after its text on Unix and
    // leaves its meaning to the label relation; a list without a label has its own name.
    static QString nameOf(QWidget* control) {
        QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(control);
        if (!qobject_cast<QComboBox*>(control)) {
            return reader->text(QAccessible::Name);
        }
        const auto labels = reader->relations(QAccessible::Label);
        return labels.isEmpty() ? control->accessibleName()
                                : labels.first().first->text(QAccessible::Name);
    }
    static void expectNames(const Controls& controls) {
        QStringList names;
        for (QWidget* control : controls) {
            const QString name = nameOf(control);
            EXPECT_FALSE(name.isEmpty()) << control->objectName().toStdString();
            EXPECT_NE(name, valueOf(control)) << name.toStdString();
            EXPECT_FALSE(names.contains(name)) << name.toStdString();
            names << name;
        }
    }
    // Buttons that Tab reaches, labels of a control and frames carry one, each its own.
    static void expectMnemonics(QWidget& shown, const Controls& controls) {
        QList<QKeySequence> keys;
        for (QWidget* widget : shown.findChildren<QWidget*>()) {
            const auto* label = qobject_cast<QLabel*>(widget);
            const auto* button = qobject_cast<QAbstractButton*>(widget);
            const auto* frame = qobject_cast<QGroupBox*>(widget);
            const QString text = label && label->buddy()               ? label->text()
                                 : button && controls.contains(widget) ? button->text()
                                 : frame                               ? frame->title()
                                                                       : QString();
            const QKeySequence key = QKeySequence::mnemonic(text);
            EXPECT_TRUE(!key.isEmpty() || frame || text.isEmpty()) << text.toStdString();
            if (!key.isEmpty()) {
                EXPECT_FALSE(keys.contains(key)) << text.toStdString();
                keys << key;
            }
        }
    }
    static void activate(QWidget* shown) {
        ASSERT_NE(shown, nullptr);
        shown->show();
        QTest::qWait(20);  // events of the step that opened it first
        shown->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(shown));
        ASSERT_EQ(QApplication::activeWindow(), shown);
    }
    // Checks a window; all but the main window and the picker close afterwards.
    void check(QWidget* shown, const char* what) {
        SCOPED_TRACE(what);
        activate(shown);
        const Controls controls = tabControls(*shown);
        ASSERT_FALSE(controls.isEmpty());
        if (focused(controls) == nullptr) {
            controls.first()->setFocus();
        }
        const Controls walked = walk(*shown, controls, false);
        EXPECT_EQ(QSet<QWidget*>(walked.begin(), walked.end()).size(), controls.size());
        expectLayoutOrder(*shown, walked);
        Controls back = walk(*shown, controls, true);
        std::reverse(back.begin() + 1, back.end());
        EXPECT_EQ(back, walked);
        expectNames(controls);
        expectMnemonics(*shown, controls);
        if (shown != window.get() && shown != picker()) {
            shown->close();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
};

TEST_F(KeyboardAccess, EveryWindowIsWalkedByTabNamedAndReachedByMnemonics) {
    activate(window.get());
    EXPECT_EQ(QApplication::focusWidget(), window->grid());
    check(window.get(), "main window");
    EXPECT_EQ(window->findChild<QLabel*>("digActualGridPos")->accessibleName(),
              "Compilation 1 of 4");
    testsupport::doubleClickRow(window->grid(), 0);
    check(opened<ui::CompilationBrowserWindow>(), "browser");
    clickTool("ID_EditCompilation");
    activate(opened<ui::EditCompilationWindow>());
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "txtCompilationName");
    check(opened<ui::EditCompilationWindow>(), "editor");
    activate(openPicker(4));
    EXPECT_EQ(QApplication::focusWidget(), picker()->sourceGrid());
    check(picker(), "picker");
    check(new ui::FilterDialog(window->session(), dialogs, *picker()), "filter");
    check(new ui::SortDialog(query::SortCaller::Source, {}, dialogs, picker()), "sort");
    check(new ui::TrackLookupWindow(window->state().database, "P", "One", true, picker()),
          "lookup");
    clickButton(picker(), "btnNavigation");
    check(picker()->findChild<ui::NavigatorWindow*>(), "navigator");
    clickButton(picker(), "btnReArrange");
    check(picker()->findChild<ui::RearrangeWindow*>(), "rearranging");
    check(ui::showCover(window->state().database, 3, "MD", dialogs, window.get()), "cover");
    window->toolBar()->reportTypeList()->setCurrentIndex(0);  // a preview
    clickTool("ID_Print");
    check(opened<ui::ReportPreviewWindow>(), "preview");
    clickTool("ID_Help");
    check(opened<ui::HelpWindow>(), "help");
}

TEST_F(KeyboardAccess, PickerCountersSayTheirValuesAndATimeOverTheMedium) {
    openPicker(4);
    doubleClickSource("One Second Too Long");
    const QString over = "over by " + query::formatTime(1);
    EXPECT_EQ(picker()->findChild<QLabel*>("lblOverTime")->text(), over);
    const QStringList names{"Compilation: Full", "Tracks: 20",
                            "Time: " + text("txtTimeCount") + ", " + over};
    for (const char* counter : {"txtCompilationName", "txtTrackCount", "txtTimeCount"}) {
        EXPECT_TRUE(names.contains(picker()->findChild<QLineEdit*>(counter)->accessibleName()));
    }
}

}  // namespace
