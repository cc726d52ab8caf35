#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

#include "music/track_tags.h"

struct sqlite3;

namespace engine {
class Statement;
}  // namespace engine

namespace music {

// A file's size and modification time: a file whose stamp is the cached one is not read again.
struct FileStamp {
    qint64 size = 0;
    qint64 modified = 0;  // milliseconds since the epoch
};

// The cache file of one scanned folder: a row per audio file (its path relative to the root,
// stamp and tags, or a mark that it could not be read) and, after a complete scan, the seven
// album tables built from those rows. A scan marks each file it meets as seen; finish() drops
// the rows of the files it did not meet. Every change happens inside a batch, one transaction;
// a batch not committed leaves nothing. SQLite failures throw engine::JetError.
class ScanCache {
  public:
    // Opens the cache, creating it when missing, for a scan of root (an absolute, clean path). A
    // cache of another root starts empty. A file that is no such cache (one with other tables) is
    // refused with JetError 3343 and left as it is.
    ScanCache(const QString& cacheFile, const QString& root);
    ~ScanCache();
    ScanCache(const ScanCache&) = delete;
    ScanCache& operator=(const ScanCache&) = delete;

    void beginBatch();
    void commitBatch();

    // Marks the file seen when its row has this stamp; false when it must be read.
    bool keepIfUnchanged(const QString& path, FileStamp stamp);
    // Stores a file read now, seen; nullopt marks it unreadable. A known path keeps its id.
    void store(const QString& path, const QString& albumFolder, FileStamp stamp,
               const std::optional<TrackTags>& tags);
    // Inside the last batch: drops the files not seen and, when any file was dropped or stored
    // since they were written, writes the album tables again.
    void finish();

    qint64 trackCount() const;
    qint64 albumCount() const;
    QStringList unreadableFiles() const;  // relative paths, in order

  private:
    void createSchema();
    void startScan(const QString& root);
    qint64 count(const QString& sql) const;

    sqlite3* db_ = nullptr;
    qint64 generation_ = 0;
    class WriteBatch;
    std::unique_ptr<WriteBatch> batch_;
    std::unique_ptr<engine::Statement> lookup_;
    std::unique_ptr<engine::Statement> markSeen_;
    std::unique_ptr<engine::Statement> upsert_;
};

}  // namespace music
