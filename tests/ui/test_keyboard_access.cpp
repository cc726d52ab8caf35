// Every window and dialog used with the keyboard alone and read by a screen reader: Tab walks
// every control in the order of the layout, every control has a name, mnemonics differ.

#include <QAccessible>

#include "query/time_text.h"
#include "shell/toolbar_tools.h"
#include "ui/windows/filter_dialog.h"
#include "ui/windows/printer_calibration_dialog.h"
#include "ui/windows/sort_dialog.h"
#include "ui/windows/track_lookup_window.h"
#include "window_fixture.h"

namespace {

using Controls = QList<QWidget*>;

// Tab once more than there are stops; from a box that takes Tab as text, the window's Tab.
Controls walk(QWidget& shown, const Controls& stops, bool back) {
    Controls walked{QApplication::focusWidget()};
    while (walked.size() <= stops.size() && walked.last() != nullptr) {
        const bool text = walked.last()->property("tabChangesFocus") == QVariant(false);
        QTest::keyClick(text ? &shown : walked.last(), Qt::Key_Tab,
                        back ? Qt::ShiftModifier : Qt::NoModifier);
        walked.append(QApplication::focusWidget());
    }
    return walked;
}

// What a screen reader says a control is, and its value. Qt names a list after its current text on
// Unix, whatever its accessible name; only the label relation tells what the list is.
std::pair<QString, QString> nameAndValue(QWidget* control) {
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(control);
    const auto labels = reader->relations(QAccessible::Label);
    const bool list = control->inherits("QComboBox"), grid = control->inherits("QAbstractItemView");
    const QString value = list ? control->property("currentText").toString()
                               : (grid ? QString() : reader->text(QAccessible::Value));
    return {list ? (labels.isEmpty() ? value : labels[0].first->text(QAccessible::Name))
                 : reader->text(QAccessible::Name),
            value};
}

class KeyboardAccess : public PickerTest {
  protected:
    // The window active with the focus on startsOn; all but the main window and the picker close
    // afterwards.
    void check(QWidget* shown, const QString& startsOn) {
        ASSERT_NE(shown, nullptr);
        SCOPED_TRACE(shown->objectName().toStdString());
        QTest::qWait(20);  // the events of the step that opened it first
        ASSERT_TRUE(testsupport::activate(shown));
        Controls stops;  // of a group of options only the chosen one
        for (QWidget* control : shown->findChildren<QWidget*>()) {
            if (control->window() == shown && control->isVisible() && control->isEnabled() &&
                (control->focusPolicy() & Qt::TabFocus) && !control->focusProxy() &&
                (!control->inherits("QRadioButton") || control->property("checked").toBool())) {
                stops.append(control);
            }
        }
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), startsOn);
        Controls walked = walk(*shown, stops, false);
        EXPECT_EQ(QSet<QWidget*>(walked.begin(), walked.end()).size(), stops.size());
        int upLeft = 0;  // steps that go neither down nor right past the control: the last
        for (qsizetype i = 1; i < walked.size() && walked[i] != nullptr; ++i) {
            const QPoint from = walked[i - 1]->mapTo(shown, QPoint());
            const QPoint to = walked[i]->mapTo(shown, QPoint());
            upLeft += to.y() >= from.y() || to.x() >= from.x() + walked[i - 1]->width() ? 0 : 1;
        }
        EXPECT_LE(upLeft, 1);
        std::reverse(walked.begin(), walked.end());
        EXPECT_EQ(walk(*shown, stops, true), walked);
        QStringList names;  // and mnemonics, of the buttons and the labels of controls
        for (QWidget* control : shown->findChildren<QWidget*>()) {
            const bool stop = stops.contains(control);
            const auto [name, value] = stop ? nameAndValue(control) : std::pair<QString, QString>();
            EXPECT_TRUE(!stop || (!name.isEmpty() && name != value && !names.contains(name)))
                << name.toStdString();
            const auto* label = qobject_cast<QLabel*>(control);
            const bool button = control->inherits("QAbstractButton") && stops.contains(control);
            const QString text = label && label->buddy() && !label->isHidden() ? label->text()
                                 : button ? control->property("text").toString()
                                          : QString();
            const QString key = QKeySequence::mnemonic(text).toString();
            EXPECT_TRUE(text.isEmpty() || (!key.isEmpty() && !names.contains(key)))
                << text.toStdString();
            names << name << key;
        }
        if (shown != window.get() && shown != picker()) {
            shown->close();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
};

TEST_F(KeyboardAccess, EveryWindowIsWalkedByTabNamedAndReachedByMnemonics) {
    check(window.get(), "grd6Compilation");
    EXPECT_EQ(child<QLabel>("digActualGridPos")->accessibleName(), "Compilation 1 of 4");
    QSet<QKeySequence> keys;  // the tools cannot take the focus: each has a key of its own
    for (const shell::ToolSpec& tool : shell::mainTools()) {
        keys << (tool.isDropDown ? QKeySequence() : window->toolBar()->tool(tool.id)->shortcut());
    }
    EXPECT_EQ(keys.size(), shell::mainTools().size());  // the report list's is Ctrl+R, by focus
    testsupport::doubleClickRow(window->grid(), 0);
    check(window->findChild<QWidget*>("frmCompilation"), "txtCompilationName");
    clickTool("ID_EditCompilation");
    check(window->findChild<QWidget*>("frmEditCompilation"), "txtCompilationName");
    openPicker(4);
    check(picker(), "grd6Source");
    doubleClickSource("One Second Too Long");  // the time is over the medium's by a second
    EXPECT_EQ(testsupport::control<QLineEdit>(picker(), "txtTimeCount")->accessibleName(),
              "Time: " + text("txtTimeCount") + ", over by " + query::formatTime(1));
    check(new ui::FilterDialog(window->session(), dialogs, *picker()), "tdbcFilterVar0");
    check(new ui::SortDialog(query::SortCaller::Source, {}, dialogs, picker()), "tdbcSortVar0");
    check(new ui::TrackLookupWindow(window->state().database, "P", "One", true, picker()),
          "txtPerformerName");
    clickButton(picker(), "btnNavigation");
    check(picker()->findChild<QWidget*>("frmNavigate"), "SSTreeNavigate");
    clickButton(picker(), "btnReArrange");
    check(picker()->findChild<QWidget*>("frmReArrange"), "grd6TrackReArrange");
    window->compilations()->recordset().setAbsolutePosition(2);  // "Five", an MD has a cover
    for (int type : {3, 0}) {                                    // the cover and a preview
        window->toolBar()->reportTypeList()->setCurrentIndex(type);
        clickTool("ID_Print");
        check(window->findChild<QWidget*>("frmARViewer"), "scrPages");
    }
    check(new ui::PrinterCalibrationDialog({"Office"}, "Office", dialogs, window.get()),
          "cmbPrinter");
    clickTool("ID_Help");
    check(window->findChild<QWidget*>("helpWindow"), "");
}

}  // namespace
