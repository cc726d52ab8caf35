#include "gui/screenshots.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QTemporaryDir>
#include <QTextStream>

#include <QHeaderView>

#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include "assembly/track_picker.h"
#include "demo/demo_collection.h"
#include "engine/recordset.h"
#include "gui/cover_screenshots.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
#include "store/compilation_queries.h"
#include "ui/controls/data_grid.h"
#include "ui/controls/main_toolbar.h"
#include "ui/controls/performer_tree_model.h"
#include "ui/qt_dialogs.h"
#include "ui/windows/compilation_browser_window.h"
#include "ui/windows/edit_compilation_window.h"
#include "ui/windows/filter_dialog.h"
#include "ui/windows/get_songs_window.h"
#include "ui/windows/help_window.h"
#include "ui/windows/navigator_window.h"
#include "ui/windows/overview_window.h"
#include "ui/windows/rearrange_window.h"
#include "ui/windows/report_preview_window.h"
#include "ui/windows/sort_dialog.h"
#include "ui/windows/track_lookup_window.h"

namespace app {

bool savePicture(QWidget* widget, const QString& folder, const QString& name) {
    widget->show();
    QApplication::processEvents();
    const bool saved = widget->grab().save(QDir(folder).filePath(name + QStringLiteral(".png")));
    QTextStream(stdout) << (saved ? "wrote " : "could not write ") << name << ".png" << Qt::endl;
    return saved;
}

namespace {

bool shownMessage(const platform::MessageRequest& request, const QString& folder,
                  const QString& name) {
    QMessageBox box;
    ui::setUpMessageBox(box, request);
    return savePicture(&box, folder, name);
}

// The editor adding a compilation, one refused Update, and the editor on a filled compilation
// with its composed cover.
// Chooses a value list's entry as the user would.
void choose(QWidget* editor, const QString& name, int index) {
    auto* list = editor->findChild<QComboBox*>(name);
    list->setCurrentIndex(index);
    emit list->activated(index);
}

// Moves the main list to the first compilation with tracks.
void moveToFilledCompilation(ui::OverviewWindow& window) {
    engine::Recordset& rows = window.compilations()->recordset();
    for (rows.moveFirst(); !rows.eof(); rows.moveNext()) {
        if (rows.value(QStringLiteral("C_SumTrack")).toInt() > 0) {
            return;
        }
    }
    rows.moveFirst();
}

// The editor adding a compilation, an Update refused for a name in use, and the editor on a
// compilation with tracks and its composed cover.
bool editorPictures(ui::OverviewWindow& window, platform::ScriptedDialogs& dialogs,
                    const QString& folder) {
    window.runTool(QStringLiteral("ID_NewCompilation"));
    auto* editor = window.findChild<ui::EditCompilationWindow*>();
    if (editor == nullptr) {
        return false;
    }
    bool ok = savePicture(editor, folder, QStringLiteral("editor-add"));
    editor->findChild<QLineEdit*>(QStringLiteral("txtCompilationName"))
        ->setText(window.compilations()->recordset().value("C_Name").toString());
    choose(editor, QStringLiteral("tdbCmbFmt"), 0);
    choose(editor, QStringLiteral("tdbCmbLen"), 0);
    editor->update();
    ok &= !dialogs.messages().empty() &&
          shownMessage(dialogs.messages().back(), folder, QStringLiteral("editor-message"));
    editor->close();
    delete editor;

    moveToFilledCompilation(window);
    window.runTool(QStringLiteral("ID_EditCompilation"));
    editor = window.findChild<ui::EditCompilationWindow*>();
    if (editor == nullptr) {
        return false;
    }
    const bool cdRom = store::isCdRomCover(editor->editor().values.format);
    editor->findChild<QPushButton*>(cdRom ? QStringLiteral("btnGet2") : QStringLiteral("btnGet1"))
        ->click();
    ok &= savePicture(editor, folder, QStringLiteral("editor-edit"));
    editor->close();
    delete editor;
    return ok;
}

bool messageBox(const QString& folder) {
    QMessageBox box(QMessageBox::Question, QStringLiteral("Mixorama"),
                    QStringLiteral("Do you really want to exit the application?"),
                    QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    return savePicture(&box, folder, QStringLiteral("message-box"));
}

// Fills the compilation with album tracks until its time no longer fits on the medium.
qint64 overfill(shell::AppState& state, qint64 compilationId) {
    engine::Recordset source = state.database.openRecordset(QStringLiteral("TempSource"));
    for (; !source.eof(); source.moveNext()) {
        const assembly::AddResult added =
            assembly::addTrack(state.database, compilationId, assembly::sourceTrackAt(source), {});
        engine::Recordset length = state.database.openRecordset(
            QStringLiteral("SELECT C_Length FROM Compilation WHERE CompilationID_P=") +
            QString::number(compilationId));
        if (assembly::exceedsMedium(added.sums.totalTime, length.value(0).toInt(),
                                    added.sums.trackCount)) {
            break;
        }
    }
    return compilationId;
}

// The sort dialog for each caller with two levels chosen; nothing is applied.
bool sortDialogs(platform::Dialogs& dialogs, QWidget* picker, const QString& folder) {
    bool ok = true;
    for (const auto caller : {query::SortCaller::Source, query::SortCaller::Compilation}) {
        ui::SortDialog dialog(
            caller, [](const QString&) {}, dialogs, picker);
        dialog.findChild<QComboBox*>(QStringLiteral("tdbcSortVar0"))->setCurrentIndex(0);
        dialog.findChild<QComboBox*>(QStringLiteral("tdbcSortOrd0"))->setCurrentIndex(0);
        dialog.findChild<QComboBox*>(QStringLiteral("tdbcSortVar1"))->setCurrentIndex(2);
        dialog.findChild<QComboBox*>(QStringLiteral("tdbcSortOrd1"))->setCurrentIndex(1);
        ok &= savePicture(&dialog, folder,
                          caller == query::SortCaller::Source ? QStringLiteral("sort-source")
                                                              : QStringLiteral("sort-compilation"));
    }
    return ok;
}

void sendMouse(QWidget* target, QEvent::Type type, QPoint at, Qt::MouseButtons held) {
    QMouseEvent event(type, at, target->mapToGlobal(at), Qt::LeftButton, held, {});
    QApplication::sendEvent(target, &event);
}

// The rearrange window while track 2 is dragged over the fourth row; the drag then ends on its
// own row, which changes nothing.
bool rearrangeWindow(ui::OverviewWindow& window, platform::Dialogs& dialogs, qint64 id,
                     QWidget* picker, const QString& folder) {
    auto* rearrange =
        new ui::RearrangeWindow(window.session(), window.windowRegistry(), dialogs, id, picker);
    rearrange->show();
    QApplication::processEvents();
    ui::DataGrid* grid = rearrange->grid();
    QWidget* rows = grid->viewport();
    const auto centre = [grid](int row) {
        return grid->visualRect(grid->model()->index(row, 2)).center();
    };
    sendMouse(rows, QEvent::MouseButtonPress, centre(1), Qt::LeftButton);
    sendMouse(rows, QEvent::MouseMove, centre(2), Qt::LeftButton);
    sendMouse(rows, QEvent::MouseMove, centre(3), Qt::LeftButton);
    const bool ok = savePicture(rearrange, folder, QStringLiteral("rearrange-dragging"));
    sendMouse(rows, QEvent::MouseMove, centre(1), Qt::LeftButton);
    sendMouse(rows, QEvent::MouseButtonRelease, centre(1), Qt::NoButton);
    rearrange->close();
    return ok;
}

// The navigator with a performer expanded and one of its tracks chosen, over the right part of
// the picker whose source grid followed it: one picture of both windows.
bool navigatorPicture(ui::GetSongsWindow& picker, const QString& folder) {
    picker.findChild<QPushButton*>(QStringLiteral("btnNavigation"))->click();
    QApplication::processEvents();
    auto* navigator = picker.findChild<ui::NavigatorWindow*>(QStringLiteral("frmNavigate"));
    if (navigator == nullptr || navigator->model()->rowCount() == 0) {
        return false;
    }
    const QModelIndex performer = navigator->model()->index(0, 0);
    navigator->tree()->expand(performer);
    const QModelIndex track = navigator->model()->index(0, 0, performer);
    navigator->tree()->setCurrentIndex(track.isValid() ? track : performer);
    navigator->resize(navigator->width(), picker.height() * 3 / 4);
    QApplication::processEvents();
    const QPixmap back = picker.grab();
    const QPixmap front = navigator->grab();
    QPixmap both(back.size());
    QPainter painter(&both);
    painter.drawPixmap(0, 0, back);
    const QPoint over(back.width() - front.width() - 24, back.height() - front.height() - 24);
    painter.fillRect(QRect(over, front.size()).adjusted(-1, -1, 1, 1), Qt::black);
    painter.drawPixmap(over, front);
    painter.end();
    const bool saved = both.save(QDir(folder).filePath(QStringLiteral("navigator.png")));
    QTextStream(stdout) << (saved ? "wrote " : "could not write ") << "navigator.png" << Qt::endl;
    navigator->close();
    return saved;
}

// The filter dialog over the picker with two conditions applied and the count of the tracks
// that pass them.
bool filterDialog(ui::GetSongsWindow& picker, shell::Session& session, platform::Dialogs& dialogs,
                  const QString& folder) {
    ui::FilterDialog filter(session, dialogs, picker);
    const char* rows[2][3] = {{"Time", ">=", "000400"}, {"Live", "=", "no"}};
    for (int i = 0; i < 2; ++i) {
        const QString index = QString::number(i);
        filter.findChild<QComboBox*>(QStringLiteral("tdbcFilterVar") + index)
            ->setEditText(QString::fromLatin1(rows[i][0]));
        filter.findChild<QComboBox*>(QStringLiteral("tdbcFilterComp") + index)
            ->setEditText(QString::fromLatin1(rows[i][1]));
        filter.findChild<QLineEdit*>(QStringLiteral("txtFilter") + index)
            ->setText(QString::fromLatin1(rows[i][2]));
    }
    filter.findChild<QComboBox*>(QStringLiteral("cmbConcat"))->setCurrentIndex(0);
    filter.findChild<QPushButton*>(QStringLiteral("btnApply"))->click();
    const bool ok = savePicture(&filter, folder, QStringLiteral("filter-dialog"));
    filter.close();
    return ok;
}

// The picker on a cassette: its sides beside the time.
bool cassettePicker(ui::OverviewWindow& window, platform::ScriptedDialogs& dialogs,
                    const QString& folder) {
    const std::optional<qint64> cassette =
        firstWithTracks(window.state().database, QStringLiteral("cassette"));
    if (!cassette) {
        return false;
    }
    QWidget editor;
    auto* picker = new ui::GetSongsWindow(window.session(), window.windowRegistry(), dialogs,
                                          *cassette, &editor);
    const bool ok = savePicture(picker, folder, QStringLiteral("picker-cassette"));
    picker->close();
    return ok;
}

// The picker with a red time, the lookup of one of its tracks, the filter dialog and the
// browser.
bool pickerWindows(ui::OverviewWindow& window, platform::ScriptedDialogs& dialogs,
                   const QString& albums, const QString& folder) {
    store::EditorConnection connection;
    connection.isSaved = true;
    dialogs.answerFile(albums);
    store::connectAlbumDatabase(window.state().database, dialogs, window.state().album, connection);
    store::buildTempSource(window.state().database, window.state().album);
    const qint64 id = overfill(
        window.state(), window.compilations()->recordset().value("CompilationID_P").toLongLong());
    window.session().announceTracksChanged(id);
    bool ok = true;
    QWidget editor;
    auto* picker =
        new ui::GetSongsWindow(window.session(), window.windowRegistry(), dialogs, id, &editor);
    picker->show();
    QApplication::processEvents();
    picker->targetGrid()->scrollToBottom();
    ok &= savePicture(picker, folder, QStringLiteral("picker-time-red"));
    engine::Recordset track = picker->targetGrid()->dataControl()->recordset().clone();
    track.moveFirst();
    {
        ui::TrackLookupWindow lookup(window.state().database,
                                     track.value("Track_Artist_Name").toString(),
                                     track.value("Track_Title").toString(), true, picker);
        ok &= savePicture(&lookup, folder, QStringLiteral("track-lookup"));
    }
    ok &= sortDialogs(dialogs, picker, folder);
    ok &= rearrangeWindow(window, dialogs, id, picker, folder);
    ok &= navigatorPicture(*picker, folder);
    ok &= filterDialog(*picker, window.session(), dialogs, folder);
    picker->close();
    ok &= cassettePicker(window, dialogs, folder);
    auto* browser = new ui::CompilationBrowserWindow(window, dialogs);
    ok &= savePicture(browser, folder, QStringLiteral("compilation-browser"));
    browser->close();
    return ok;
}

// The previews of the three lists the print tool shows, on a compilation with tracks.
bool reportPreviews(ui::OverviewWindow& window, const QString& folder) {
    moveToFilledCompilation(window);
    const QStringList names{QStringLiteral("preview-tracks-all"), QStringLiteral("preview-tracks"),
                            QStringLiteral("preview-protocol")};
    bool ok = true;
    for (int type = 0; type < names.size(); ++type) {
        window.toolBar()->reportTypeList()->setCurrentIndex(type);
        window.runTool(QStringLiteral("ID_Print"));
        const QList<ui::ReportPreviewWindow*> previews =
            window.findChildren<ui::ReportPreviewWindow*>();
        if (previews.isEmpty()) {
            return false;
        }
        ok &= savePicture(previews.last(), folder, names[type]);
        delete previews.last();
    }
    return ok;
}

}  // namespace

int writeScreenshots(const QString& folder) {
    QDir().mkpath(folder);
    QTemporaryDir work;
    const QString compilations = work.filePath(QStringLiteral("demo.mdb"));
    demo::writeDemo(compilations, work.filePath(QStringLiteral("albums.mdb")));

    // Connecting an album database remembers its folder: here in the work folder only.
    qputenv("XDG_CONFIG_HOME", work.filePath(QStringLiteral("config")).toUtf8());
    platform::ScriptedDialogs dialogs;
    bool ok = true;
    {
        ui::OverviewWindow window(dialogs);
        ok &= savePicture(&window, folder, QStringLiteral("overview-no-database"));
        ok &= window.loadDatabase(compilations);
        ok &= savePicture(&window, folder, QStringLiteral("overview-database-open"));
        window.grid()->horizontalHeader()->sectionClicked(1);
        ok &= savePicture(&window, folder, QStringLiteral("overview-find-storage"));
        ok &= pickerWindows(window, dialogs, work.filePath(QStringLiteral("albums.mdb")), folder);
        ok &= editorPictures(window, dialogs, folder);
        ok &= coverPictures(window, folder);
        ok &= reportPreviews(window, folder);
        ui::HelpWindow help;
        help.showContents();
        ok &= savePicture(&help, folder, QStringLiteral("help"));
        window.unloadAll();
    }
    ok &= messageBox(folder);
    return ok ? 0 : 1;
}

}  // namespace app
