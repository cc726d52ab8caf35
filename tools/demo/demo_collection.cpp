#include "demo/demo_collection.h"

#include <QFileInfo>
#include <random>
#include <stdexcept>

#include "albumgen/albumgen.h"
#include "engine/jet_error.h"
#include "engine/transaction.h"
#include "engine/workspace.h"
#include "shell/database_files.h"

namespace demo {

namespace {

struct Medium {
    const char* format;
    int minutes;
    const char* manufacturer;
};

const Medium kMedia[] = {{"MD", 74, "Sony"},         {"MD", 80, "TDK"},
                         {"CD-ROM", 80, "Verbatim"}, {"CD-R", 74, "Philips"},
                         {"Cassette", 90, "BASF"},   {"Cassette", 60, "Maxell"},
                         {"MD", 74, "Maxell"},       {"DAT", 120, "Sony"}};

const char* kTitles[] = {
    "Summer Mix '98",  "Road Trip",          "Late Night Drive",  "Rainy Sunday",
    "Party Starters",  "Ärzte & Friends",    "Unplugged Evening", "Best of 1987",
    "Kitchen Grooves", "Winter Warmers",     "Garage Days",       "Björk & Beyond",
    "Slow Dances",     "Rock'n'Roll Heaven", "Coffee House",      "Workout",
    "Live at Home",    "Sixties Gold",       "Seventies Gems",    "Eighties Hits",
    "Nineties Mix",    "Guitar Heroes",      "Chill Out",         "Dinner Party",
    "Christmas Tape",  "Wedding Songs",      "Long Night",        "Morning Coffee",
    "Beach House",     "Mountain Air",       "City Lights",       "Old Friends",
    "New Finds 2000",  "Road Trip II",       "Zappa Time",        "Ocean Drive"};

const char* kBoxes[] = {"Box 1", "Box 2", "Shelf A", "Car", "Drawer", nullptr};

using Random = std::mt19937;

int pick(Random& random, int count) {
    return std::uniform_int_distribution<int>(0, count - 1)(random);
}

void addTracks(engine::Database& database, qint64 compilationId, int minutes,
               const albumgen::Collection& albums, Random& random) {
    engine::Recordset tracks = database.openRecordset(QStringLiteral("CompilationTrack"));
    int trackNo = 0;
    qint64 seconds = 0;
    const int wanted = 4 + pick(random, 14);
    for (int attempt = 0; attempt < 60 && trackNo < wanted; ++attempt) {
        const albumgen::Track& track = albums.tracks[pick(random, int(albums.tracks.size()))];
        if (seconds + track.length > minutes * 60 + 120) {
            continue;  // a little over the medium now and then shows the red warning
        }
        const albumgen::Album& album = albums.albums[track.albumId - albums.albums.front().id];
        tracks.addNew();
        tracks.setValue("CompilationID_F1", compilationId);
        tracks.setValue("TrackNo", ++trackNo);
        tracks.setValue("Track_Artist_Name", track.artistSort);
        tracks.setValue("Track_Title", track.title);
        tracks.setValue("Album_Title", album.title);
        tracks.setValue("Album_Artist_Name", album.artistSort);
        tracks.setValue("Length", track.length);
        tracks.setValue("RecordedStart",
                        track.recordedStart.trimmed().left(4).toInt() > 0
                            ? QVariant(track.recordedStart.trimmed().left(4).toInt())
                            : QVariant());
        tracks.setValue("Live", track.live);
        tracks.setValue("Version", track.version.isEmpty() ? QVariant() : QVariant(track.version));
        tracks.setValue("Item", track.item);
        tracks.setValue("Index", track.index);
        tracks.setValue("ArtistSort", track.artistSort);
        tracks.setValue("AlbumArtistSort", album.artistSort);
        tracks.setValue("AlbumoryTrackID", track.id);
        tracks.setValue("AlbumoryAlbumID", album.id);
        tracks.update();
        seconds += track.length;
    }
    database.execute(QStringLiteral("UPDATE Compilation SET SumTrack = %1, SumTime = %2 "
                                    "WHERE CompilationID_P = %3")
                         .arg(trackNo)
                         .arg(seconds)
                         .arg(compilationId));
}

void fillCompilations(const QString& path, int count, quint32 seed,
                      const albumgen::Collection* albums) {
    if (QFileInfo::exists(path)) {
        throw std::runtime_error(path.toStdString() + " exists");
    }
    shell::createFromTemplate(path);
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
    Random random(seed);
    engine::ScopedTransaction transaction(database);
    engine::Recordset compilations = database.openRecordset(QStringLiteral("Compilation"));
    const int titleCount = int(std::size(kTitles));
    for (int i = 0; i < count; ++i) {
        const Medium& medium = kMedia[pick(random, int(std::size(kMedia)))];
        QString name = QString::fromUtf8(kTitles[i % titleCount]);
        if (i >= titleCount) {
            name += QStringLiteral(" #%1").arg(i / titleCount + 1);
        }
        compilations.addNew();
        compilations.setValue("Name", name);
        compilations.setValue("Format", medium.format);
        compilations.setValue("C_Length", medium.minutes);
        compilations.setValue("Manufacturer", medium.manufacturer);
        const char* box = kBoxes[pick(random, int(std::size(kBoxes)))];
        compilations.setValue("Box", box ? QVariant(QString::fromUtf8(box)) : QVariant());
        compilations.setValue("RecDate", QDate(1996, 1, 1).addDays(pick(random, 2200)));
        if (pick(random, 3) == 0) {
            compilations.setValue("Notes",
                                  QStringLiteral("Recorded for a friend; side B a bit quiet."));
        }
        compilations.update();
        compilations.setBookmark(compilations.lastModified());
        const qint64 id = compilations.value("CompilationID_P").toLongLong();
        if (albums != nullptr && pick(random, 4) != 0) {
            addTracks(database, id, medium.minutes, *albums, random);
        }
    }
    transaction.commit();
    database.close();
}

}  // namespace

void writeDemo(const QString& compilationPath, const QString& albumPath) {
    albumgen::Options options;
    options.albums = 150;
    options.seed = 1998;
    if (QFileInfo::exists(albumPath)) {
        throw std::runtime_error(albumPath.toStdString() + " exists");
    }
    albumgen::writeAlbumDatabase(albumPath, options);
    const albumgen::Collection albums = albumgen::generate(options);
    fillCompilations(compilationPath, 36, 42, &albums);
}

void writeCompilations(const QString& compilationPath, int compilationCount, quint32 seed) {
    fillCompilations(compilationPath, compilationCount, seed, nullptr);
}

}  // namespace demo
