#include "window_fixture.h"

#include <QDir>
#include <QFileInfo>

#include "shell/database_commands.h"
#include "store/album_source.h"

using testsupport::SampleTrack;

bool processHoldsFile(const QString& path) {
    const QString file = QFileInfo(path).canonicalFilePath();
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    for (const QString& fd : descriptors.entryList(QDir::AllEntries | QDir::System)) {
        if (QFileInfo(descriptors.filePath(fd)).symLinkTarget().startsWith(file)) {
            return true;
        }
    }
    return false;
}

QString WindowTest::makeDatabase(const QString& name,
                                 const QList<testsupport::SampleCompilation>& samples) {
    const QString path = dir.file(name);
    testsupport::createCompilationDatabase(path);
    for (const testsupport::SampleCompilation& sample : samples) {
        testsupport::addSample(path, sample);
    }
    return path;
}

void PickerTest::SetUp() {
    WindowTest::SetUp();
    qputenv("XDG_CONFIG_HOME", dir.file("config").toUtf8());
    QList<SampleTrack> five;
    for (const char* title : {"One", "Two", "Three", "Four", "Five"}) {
        five.append({.performer = "P", .title = title, .seconds = 100 * int(five.size() + 1)});
    }
    const QList<SampleTrack> full(19, {.performer = "Filler", .title = "Filler", .seconds = 200});
    path = makeDatabase(
        "picks.mdb",
        {{.name = "Beat Club",
          .format = "CD-R",
          .minutes = 80,
          .tracks = {{.performer = "Simon & Garfunkel", .title = "Mrs. Robinson", .seconds = 244}},
          .id = 1},
         {.name = "Road Trip", .id = 2},
         {.name = "Five", .minutes = 60, .tracks = five, .id = 3},
         {.name = "Full", .tracks = full, .id = 4}});
    writeAlbums(dir.file("albums.mdb"));
    openThroughToolbar(path);
    window->show();
    connectAlbums(dir.file("albums.mdb"));
    editor.show();
}

void PickerTest::writeAlbums(const QString& albumsPath) {
    testsupport::writeAlbumFile(albumsPath,
                                {{"The Beatles", "Help!", 140},
                                 {"Simon & Garfunkel", "Mrs. Robinson", 244},
                                 {"Simon", "Kodachrome", 212},
                                 {"O'Neil", "Fits Exactly", 583},
                                 {"O'Neil", "One Second Too Long", 584}},
                                performerKeys);
}

void PickerTest::connectAlbums(const QString& albumsPath) {
    store::EditorConnection connection;
    connection.isSaved = true;
    dialogs.answerFile(albumsPath);
    store::connectAlbumDatabase(window->state().database, dialogs, window->state().album,
                                connection);
    ASSERT_TRUE(connection.albumConnected) << dialogs.lastMessageText().toStdString();
    dialogs.clear();
}

void PickerTest::TearDown() {
    if (picker_) {
        picker_->close();
    }
    WindowTest::TearDown();
}

ui::GetSongsWindow* PickerTest::openPicker(qint64 compilationId) {
    picker_ = new ui::GetSongsWindow(window->session(), window->windowRegistry(), dialogs,
                                     compilationId, &editor);
    picker_->show();
    QApplication::processEvents();
    return picker_;
}

QString PickerTest::text(const QString& name) const {
    return testsupport::control<QLineEdit>(picker_, name)->text();
}

void PickerTest::selectSource(const QString& title, bool doubleClick) {
    const int row = testsupport::rowWith(picker_->sourceGrid(), 1, title);
    (doubleClick ? testsupport::doubleClickRow : testsupport::clickRow)(picker_->sourceGrid(), row,
                                                                        1);
}
