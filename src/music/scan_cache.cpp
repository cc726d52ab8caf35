#include "music/scan_cache.h"

#include <sqlite3.h>
#include <QFile>

#include "engine/jet_collation.h"
#include "engine/jet_error.h"
#include "engine/sqlite_statement.h"
#include "music/album_tables.h"
#include "music/sqlite_script.h"

namespace music {

namespace {

const char* const kSchema = R"sql(
    CREATE TABLE IF NOT EXISTS ScanState (Key TEXT PRIMARY KEY, Value);
    CREATE TABLE IF NOT EXISTS ScanFile (
        FileID INTEGER PRIMARY KEY AUTOINCREMENT, Path TEXT NOT NULL UNIQUE,
        Folder TEXT NOT NULL, Size INTEGER NOT NULL, Modified INTEGER NOT NULL,
        Seen INTEGER NOT NULL, Readable INTEGER NOT NULL,
        Title TEXT, Artist TEXT, AlbumArtist TEXT, ArtistSort TEXT, AlbumArtistSort TEXT,
        Album TEXT, Version TEXT, Year INTEGER, Disc INTEGER, TrackNo INTEGER,
        RatingID INTEGER, Rating TEXT, Live INTEGER, Seconds INTEGER);
    CREATE TABLE IF NOT EXISTS ScanAlbum (
        AlbumID INTEGER PRIMARY KEY AUTOINCREMENT, Folder TEXT NOT NULL, Title TEXT NOT NULL,
        UNIQUE (Folder, Title));
    CREATE TABLE IF NOT EXISTS ScanArtist (
        ArtistID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT NOT NULL UNIQUE);
)sql";

const char* const kUpsert = R"sql(
    INSERT INTO ScanFile (Path, Folder, Size, Modified, Seen, Readable, Title, Artist,
                          AlbumArtist, ArtistSort, AlbumArtistSort, Album, Version, Year, Disc,
                          TrackNo, RatingID, Rating, Live, Seconds)
    VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15, ?16, ?17, ?18, ?19,
            ?20)
    ON CONFLICT (Path) DO UPDATE SET
        Folder = ?2, Size = ?3, Modified = ?4, Seen = ?5, Readable = ?6, Title = ?7, Artist = ?8,
        AlbumArtist = ?9, ArtistSort = ?10, AlbumArtistSort = ?11, Album = ?12, Version = ?13,
        Year = ?14, Disc = ?15, TrackNo = ?16, RatingID = ?17, Rating = ?18, Live = ?19,
        Seconds = ?20
)sql";

QVariant ratingId(const QString& rating) {
    const qsizetype index = ratingTexts().indexOf(rating);
    return index < 0 ? QVariant() : QVariant(qint64(index + 1));
}

void bindTags(engine::Statement& statement, const TrackTags& tags) {
    const QVariantList values{tags.title,
                              tags.artist,
                              tags.albumArtist,
                              tags.artistSort,
                              tags.albumArtistSort,
                              tags.album,
                              tags.version,
                              tags.year,
                              tags.disc,
                              tags.track,
                              ratingId(tags.rating),
                              tags.rating.isEmpty() ? QVariant() : QVariant(tags.rating),
                              tags.live ? 1 : 0,
                              tags.seconds};
    for (int i = 0; i < values.size(); ++i)
        statement.bind(7 + i, values[i]);
}

}  // namespace

// BEGIN IMMEDIATE takes the write lock before anything is read, so that two scans of one folder
// wait for each other's batches (the busy timeout) instead of each holding a read lock the other
// needs to write, which SQLite answers with "busy" at once.
class ScanCache::WriteBatch {
  public:
    explicit WriteBatch(sqlite3* db) : db_(db) {
        execScript(db_, QStringLiteral("BEGIN IMMEDIATE"));
    }
    ~WriteBatch() {
        if (!done_)
            sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;
    void commit() {
        execScript(db_, QStringLiteral("COMMIT"));
        done_ = true;
    }

  private:
    sqlite3* db_;
    bool done_ = false;
};

ScanCache::ScanCache(const QString& cacheFile, const QString& root) {
    const int rc = sqlite3_open_v2(QFile::encodeName(cacheFile).constData(), &db_,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    try {
        if (rc != SQLITE_OK)
            engine::throwSqliteError(db_, rc, cacheFile);
        sqlite3_busy_timeout(db_, 60000);  // another scan's batch of files may take a while
        engine::registerJetCollation(db_);
        createSchema();
        startScan(root);
        lookup_ = std::make_unique<engine::Statement>(
            db_, QStringLiteral("SELECT FileID, Size, Modified FROM ScanFile WHERE Path = ?1"));
        markSeen_ = std::make_unique<engine::Statement>(
            db_, QStringLiteral("UPDATE ScanFile SET Seen = ?1 WHERE FileID = ?2"));
        upsert_ = std::make_unique<engine::Statement>(db_, QString::fromLatin1(kUpsert));
    } catch (...) {
        sqlite3_close_v2(db_);  // the destructor does not run for a constructor that throws
        throw;
    }
}

ScanCache::~ScanCache() {
    batch_.reset();  // a batch not committed is rolled back
    lookup_.reset();
    markSeen_.reset();
    upsert_.reset();
    sqlite3_close_v2(db_);
}

void ScanCache::createSchema() {
    const qint64 tables = count(QStringLiteral(
        "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%'"));
    const qint64 ours = count(QStringLiteral(
        "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = 'ScanFile'"));
    if (tables > 0 && ours == 0) {
        throw engine::JetError(
            engine::jet::kNotADatabase,
            QStringLiteral("'%1' is not a music folder cache; it was left as it is.")
                .arg(QString::fromUtf8(sqlite3_db_filename(db_, "main"))));
    }
    WriteBatch transaction(db_);
    execScript(db_, QString::fromLatin1(kSchema));
    transaction.commit();
}

// A new scan: its own mark for the files it meets; the rows of another root are dropped.
void ScanCache::startScan(const QString& root) {
    WriteBatch transaction(db_);
    engine::Statement stored(db_, QStringLiteral("SELECT Value FROM ScanState WHERE Key = 'root'"));
    if (stored.step() && stored.text(0) != root)
        execScript(db_, QStringLiteral("DELETE FROM ScanFile"));
    generation_ = count(QStringLiteral(
                      "SELECT ifnull(max(Value), 0) FROM ScanState WHERE Key = 'generation'")) +
                  1;
    engine::Statement save(db_, QStringLiteral("INSERT OR REPLACE INTO ScanState VALUES "
                                               "('root', ?1), ('generation', ?2)"));
    save.bind(1, root);
    save.bind(2, generation_);
    save.exec();
    transaction.commit();
}

void ScanCache::beginBatch() {
    batch_ = std::make_unique<WriteBatch>(db_);
}

void ScanCache::commitBatch() {
    batch_->commit();
    batch_.reset();
}

bool ScanCache::keepIfUnchanged(const QString& path, FileStamp stamp) {
    lookup_->reset();
    lookup_->bind(1, path);
    const bool unchanged =
        lookup_->step() && lookup_->int64(1) == stamp.size && lookup_->int64(2) == stamp.modified;
    const qint64 id = unchanged ? lookup_->int64(0) : 0;
    lookup_->reset();  // a statement left open on a row would lock the tables finish() drops
    if (!unchanged)
        return false;
    markSeen_->reset();
    markSeen_->bind(1, generation_);
    markSeen_->bind(2, id);
    markSeen_->exec();
    return true;
}

void ScanCache::store(const QString& path, const QString& albumFolder, FileStamp stamp,
                      const std::optional<TrackTags>& tags) {
    upsert_->reset();
    const QVariantList values{path,           albumFolder, stamp.size,
                              stamp.modified, generation_, tags.has_value() ? 1 : 0};
    for (int i = 0; i < values.size(); ++i)
        upsert_->bind(1 + i, values[i]);
    if (tags)
        bindTags(*upsert_, *tags);
    else
        for (int i = 7; i <= 20; ++i)
            upsert_->bind(i, QVariant());
    upsert_->exec();
    // The album tables no longer match the files; a cancelled scan leaves the mark for the next.
    execScript(db_, QStringLiteral("INSERT OR REPLACE INTO ScanState VALUES ('stale', 1)"));
}

void ScanCache::finish() {
    engine::Statement drop(db_, QStringLiteral("DELETE FROM ScanFile WHERE Seen <> ?1"));
    drop.bind(1, generation_);
    drop.exec();
    const bool dropped = sqlite3_changes(db_) > 0;
    const bool stale =
        count(QStringLiteral("SELECT count(*) FROM ScanState WHERE Key = 'stale'")) > 0 ||
        count(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE name = 'Track'")) == 0;
    if (dropped || stale) {  // an unchanged tree keeps its tables
        writeAlbumTables(db_);
        execScript(db_, QStringLiteral("DELETE FROM ScanState WHERE Key = 'stale'"));
    }
}

qint64 ScanCache::count(const QString& sql) const {
    engine::Statement statement(db_, sql);
    return statement.step() ? statement.int64(0) : 0;
}

qint64 ScanCache::trackCount() const {
    return count(QStringLiteral("SELECT count(*) FROM Track"));
}

qint64 ScanCache::albumCount() const {
    return count(QStringLiteral("SELECT count(*) FROM Album"));
}

QStringList ScanCache::unreadableFiles() const {
    engine::Statement statement(
        db_, QStringLiteral("SELECT Path FROM ScanFile WHERE NOT Readable ORDER BY Path"));
    QStringList paths;
    while (statement.step())
        paths << statement.text(0);
    return paths;
}

}  // namespace music
