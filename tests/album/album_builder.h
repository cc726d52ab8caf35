#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "albumgen/albumgen.h"

namespace albumtest {

// The fields of a track a test cares about; the rest get plain values.
struct TrackSpec {
    qint32 albumId = 0;
    QString title;
    QString artistSort;
    std::vector<qint32> performers;  // ArtistTrackLink rows; none leaves the track unlinked
    qint16 item = 1;
    qint16 index = 1;
    QString version;
    bool live = false;
    QString recordedStart;
    std::optional<qint32> ratingId;
};

// Builds a small album collection by hand, with ids counted from 1.
class CollectionBuilder {
  public:
    explicit CollectionBuilder(bool withRating);

    qint32 artist(const QString& name, const QString& sortName);
    qint32 location(const QString& name);
    qint32 rating(const QString& text);
    qint32 album(const QString& title, const QString& artistSort,
                 const std::vector<qint32>& performers, std::optional<qint32> locationId);
    qint32 track(const TrackSpec& wanted);

    const albumgen::Collection& collection() const { return c_; }

  private:
    albumgen::Collection c_;
};

// Writes the collection as an Access file, in the schema of the cataloguing program.
void writeAccessFile(const QString& path, const albumgen::Collection& collection);

}  // namespace albumtest
