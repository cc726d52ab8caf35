#include "picker_fixture.h"

#include <QAbstractItemModel>

#include "support/album_schema.h"
#include "support/databases.h"

void writeAlbumFile(const QString& path, const std::vector<AlbumTrack>& tracks,
                    bool performerKeys) {
    testsupport::createAlbumTables(path, true);
    testsupport::execRaw(path, R"sql(
        INSERT INTO Artist VALUES (1000, 'Various');
        INSERT INTO Album VALUES (1, 'Collection', 'Various', NULL);
        INSERT INTO ArtistAlbumLink VALUES (1000, 1);
    )sql");
    QStringList rows;
    for (size_t i = 0; i < tracks.size(); ++i) {
        const AlbumTrack& track = tracks[i];
        auto quoted = [](QString text) { return "'" + text.replace("'", "''") + "'"; };
        // By default the tracks keep their order: all sort under the same performer key, by
        // Index.
        rows << QStringLiteral(
                    "INSERT INTO Artist VALUES (%1, %2); "
                    "INSERT INTO Track VALUES (%1, 1, %3, %4, 1, %1, %5, NULL, 0, '1999', NULL); "
                    "INSERT INTO ArtistTrackLink VALUES (%1, %1);")
                    .arg(i + 1)
                    .arg(quoted(track.performer),
                         performerKeys ? quoted(track.performer) : QStringLiteral("'A'"),
                         quoted(track.title))
                    .arg(track.length);
    }
    testsupport::execRaw(path, rows.join(' '));
}

void PickerWindowTest::SetUp() {
    OverviewFixture::SetUp();
    qputenv("XDG_CONFIG_HOME", dir.file("config").toUtf8());
    path = makeDatabase("picks.mdb");
    testsupport::execRaw(path, R"sql(
        INSERT INTO Compilation (CompilationID_P, Name, Format, C_Length, SumTrack, SumTime)
        VALUES (1, 'Beat Club', 'CD-R', 80, 1, 244), (2, 'Road Trip', 'MD', 74, 0, 0),
               (3, 'Five', 'MD', 60, 5, 1500), (4, 'Full', 'MD', 74, 19, 3800);
        INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name, Track_Title,
                                      Length)
        VALUES (1, 1, 'Simon & Garfunkel', 'Mrs. Robinson', 244),
               (3, 1, 'P', 'One', 100), (3, 2, 'P', 'Two', 200), (3, 3, 'P', 'Three', 300),
               (3, 4, 'P', 'Four', 400), (3, 5, 'P', 'Five', 500);
        WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 19)
        INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name, Track_Title,
                                      Length)
        SELECT 4, i, 'Filler', 'Filler ' || i, 200 FROM n;
    )sql");
    const QString albums = dir.file("albums.mdb");
    writeAlbums(albums);
    openThroughToolbar(path);
    window->show();
    store::EditorConnection connection;
    connection.isSaved = true;
    dialogs.answerFile(albums);
    store::connectAlbumDatabase(window->state().database, dialogs, window->state().album,
                                connection);
    ASSERT_TRUE(connection.albumConnected) << dialogs.lastMessageText().toStdString();
    dialogs.clear();
    editor.setWindowTitle("Editor");
    editor.show();
}

void PickerWindowTest::writeAlbums(const QString& albumsPath) {
    writeAlbumFile(albumsPath,
                   {{"The Beatles", "Help!", 140},
                    {"Simon & Garfunkel", "Mrs. Robinson", 244},
                    {"Simon", "Kodachrome", 212},
                    {"O'Neil", "Fits Exactly", 583},
                    {"O'Neil", "One Second Too Long", 584}},
                   performerKeys);
}

void PickerWindowTest::TearDown() {
    if (picker_) {
        picker_->close();
    }
    OverviewFixture::TearDown();
}

ui::GetSongsWindow* PickerWindowTest::openPicker(qint64 compilationId) {
    picker_ = new ui::GetSongsWindow(window->session(), window->windowRegistry(), dialogs,
                                     compilationId, &editor);
    picker_->show();
    QApplication::processEvents();
    return picker_;
}

QColor PickerWindowTest::timeColour() const {
    return picker_->findChild<QLineEdit*>("txtTimeCount")->palette().color(QPalette::Text);
}

void PickerWindowTest::selectSource(const QString& title) {
    const QAbstractItemModel* model = picker_->sourceGrid()->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        if (model->index(row, 1).data().toString() == title) {
            picker_->sourceGrid()->scrollTo(model->index(row, 0));
            const QRect cell = picker_->sourceGrid()->visualRect(model->index(row, 1));
            QTest::mouseClick(picker_->sourceGrid()->viewport(), Qt::LeftButton, {}, cell.center());
            return;
        }
    }
    ADD_FAILURE() << "no source row " << title.toStdString();
}

void PickerWindowTest::selectTarget(int row) {
    QAbstractItemView* grid = picker_->targetGrid();
    grid->scrollTo(grid->model()->index(row, 0));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                      grid->visualRect(grid->model()->index(row, 1)).center());
}

void PickerWindowTest::doubleClickRow(QAbstractItemView* grid, int row) {
    grid->scrollTo(grid->model()->index(row, 0));
    const QPoint centre = grid->visualRect(grid->model()->index(row, 1)).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, centre);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, centre);
}

void PickerWindowTest::doubleClickSource(const QString& title) {
    selectSource(title);
    const int row = picker_->sourceGrid()->currentIndex().row();
    doubleClickRow(picker_->sourceGrid(), row);
}

void PickerWindowTest::answerLookupWith(const QString& buttonName,
                                        std::function<void(ui::TrackLookupWindow&)> inspect) {
    lookupShown_ = false;
    auto attempts = std::make_shared<int>(0);
    auto answer = std::make_shared<std::function<void()>>();
    *answer = [this, buttonName, inspect, attempts, answer] {
        auto* lookup = qobject_cast<ui::TrackLookupWindow*>(QApplication::activeModalWidget());
        if (lookup == nullptr) {
            if (++*attempts < 50) {
                QTimer::singleShot(10, *answer);
            }
            return;
        }
        lookupShown_ = true;
        if (inspect) {
            inspect(*lookup);
        }
        if (buttonName.isEmpty()) {
            lookup->close();  // as the window's close button does
        } else {
            QTest::mouseClick(lookup->findChild<QPushButton*>(buttonName), Qt::LeftButton);
        }
        *answer = nullptr;  // ends the cycle of the function holding itself
    };
    QTimer::singleShot(0, *answer);
}

QString PickerWindowTest::tracksOf(qint64 compilationId) const {
    return testsupport::queryRaw(
        path, QStringLiteral("SELECT group_concat(TrackNo || ':' || Track_Title, ' ') FROM "
                             "(SELECT TrackNo, Track_Title FROM CompilationTrack WHERE "
                             "CompilationID_F1 = %1 ORDER BY TrackNo)")
                  .arg(compilationId));
}

QString PickerWindowTest::sumsOf(qint64 compilationId) const {
    return testsupport::queryRaw(
        path, QStringLiteral("SELECT SumTrack || '/' || SumTime FROM Compilation WHERE "
                             "CompilationID_P = %1")
                  .arg(compilationId));
}
