#pragma once

#include "jet4/jet4.h"

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

// A deterministic album collection in the cataloguing program's schema, written as a Jet 4
// file. The same options always give the same collection and the same file bytes.
namespace albumgen {

struct Options {
    int albums = 10;
    quint32 seed = 1;
    bool withRating = true;  // false: the file has no TrackRating table
};

struct Artist {
    qint32 id;
    QString name;
    QString sortName;  // "Beatles, The", "Dylan, Bob"
};

struct Album {
    qint32 id;
    QString title;
    QString artistSort;
    std::optional<qint32> locationId;
    qint16 year;
    QString label;  // null QString: no label
    std::optional<double> price;
    quint8 discs;
    QDate purchased;
    QString notes;  // null QString: no notes; some run to several thousand characters
};

struct Track {
    qint32 id;
    qint32 albumId;
    QString artistSort;
    QString title;
    qint16 item;      // disc
    qint16 index;     // position on the disc
    qint32 length;    // seconds
    QString version;  // often empty, never null
    bool live;
    QString recordedStart;           // " 1987-05-01", " 1987" or empty
    std::optional<qint32> ratingId;  // may also name no TrackRating row (0)
    QString composer;
    QString genre;
    QString comment;
    std::optional<quint8> bpm;
    QDateTime added;
};

struct Link {
    qint32 artistId;
    qint32 otherId;  // album or track
};

struct Named {
    qint32 id;
    QString name;
};

struct Collection {
    bool withRating = true;
    std::vector<Artist> artists;
    std::vector<Album> albums;
    std::vector<Track> tracks;
    std::vector<Link> artistAlbumLinks;
    std::vector<Link> artistTrackLinks;
    std::vector<Named> ratings;  // empty without rating
    std::vector<Named> locations;
};

Collection generate(const Options& options);

// A table as it is written: its columns and its rows in file order (invalid QVariant = Null).
struct TableRows {
    QString name;
    std::vector<jet4::Column> columns;
    std::vector<QVariantList> rows;
};
std::vector<TableRows> tableRows(const Collection& collection);

// Write the generated collection, or any other, as a Jet 4 file. Throw std::runtime_error when
// the file cannot be written.
void writeAlbumDatabase(const QString& path, const Options& options);
void writeCollection(const QString& path, const Collection& collection);

}  // namespace albumgen
