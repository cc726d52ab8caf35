#pragma once

#include <QString>
#include <QVariant>
#include <QtGlobal>
#include <functional>

namespace engine {
class Database;
class Recordset;
}  // namespace engine

// The track picker's logic: the lookup of tracks already recorded, adding a source track to a
// compilation, removing one, and what the picker shows about the time and the source position.
// Each change is one transaction after which the compilation's SumTrack and SumTime are the
// count and the total Length (Null counting 0) of its tracks, numbered 1 to n.
namespace assembly {

// The compilations holding a track of this performer and title (compared as the engine
// compares text: without regard to case), ordered by compilation name and track number. Only
// reads: the file carries the lookup's index (store::ensureTrackLookupIndex), and without it the
// lookup scans all tracks.
engine::Recordset findTrackOnCompilations(engine::Database& database, const QString& performer,
                                          const QString& title);
// The statement findTrackOnCompilations opens, for a data control that shows the same rows.
QString trackLookupStatement(const QString& performer, const QString& title);

// A TempSource row as addTrack copies it into CompilationTrack. Null values stay Null.
struct SourceTrack {
    QVariant performerTrack;   // PerformerTrack
    QVariant titleTrack;       // TitleTrack
    QVariant length;           // Length, seconds
    QVariant myRecorded;       // MyRecorded, the recording year
    QVariant titleAlbum;       // TitleAlbum
    QVariant live;             // Live
    QVariant version;          // Version
    QVariant performerAlbum;   // PerformerAlbum
    QVariant item;             // Item
    QVariant index;            // Index
    QVariant ratingTrack;      // RatingTrack
    QVariant artistSort;       // ArtistSort
    QVariant albumArtistSort;  // AlbumArtistSort
    QVariant location;         // Location
    QVariant trackTrackId;     // TrackTrackID
    QVariant trackAlbumId;     // TrackAlbumID
    QVariant file;             // TrackFile: the music file's path; Null from an album database
};

// The current row of a record set over TempSource (any order or filter). Throws JetError 3021
// when there is no current row.
SourceTrack sourceTrackAt(const engine::Recordset& tempSource);

// A compilation's tracks as the database holds them.
struct TrackSums {
    int trackCount = 0;    // SumTrack
    qint64 totalTime = 0;  // SumTime, seconds
};

// The count and total Length (Null as 0) of the compilation's CompilationTrack rows.
TrackSums countTracks(engine::Database& database, qint64 compilationId);

struct AddResult {
    bool added = false;  // false: the user cancelled at the lookup, nothing changed
    int trackNo = 0;     // the new track's number when added
    TrackSums sums;      // the compilation's tracks afterwards
};

// Asked with the lookup's rows when the track is already on a compilation; true adds it anyway.
using ConfirmRecorded = std::function<bool(engine::Recordset& lookup)>;

// Appends the source track to the compilation as track count + 1 and stores the new SumTrack
// and SumTime, in one transaction. When the performer and title are already recorded,
// confirmRecorded decides first (an empty one adds without asking). Throws JetError (nothing
// changed) when the compilation does not exist (3021) or a write fails.
AddResult addTrack(engine::Database& database, qint64 compilationId, const SourceTrack& track,
                   const ConfirmRecorded& confirmRecorded);

// Deletes track trackNo of the compilation, numbers the rest 1 to n in their order and stores
// the new sums, in one transaction. Throws JetError 3021 (nothing changed) when the compilation
// has no such track.
TrackSums removeTrack(engine::Database& database, qint64 compilationId, int trackNo);

// The seconds a medium of lengthMinutes holds for trackCount tracks: 3 seconds of gap between
// two tracks.
qint64 timeCapacity(int lengthMinutes, int trackCount);

// True when the total time no longer fits on the medium; a time equal to the capacity fits.
bool exceedsMedium(qint64 totalTime, int lengthMinutes, int trackCount);

// Colours as 0xBBGGRR values: the time counter red when the time exceeds the medium, else green.
inline constexpr quint32 kTimeFitsColour = 49152;   // green 0,192,0
inline constexpr quint32 kTimeExceedsColour = 255;  // red
quint32 timeColour(qint64 totalTime, int lengthMinutes, int trackCount);

// Rearranging needs two tracks at least.
bool rearrangeEnabled(int trackCount);

// The source position display: the 1-based row number of the record set's absolutePosition
// (0-based, -1 off a row), a blank and the count of rows passing the filter ("5 1432").
QString sourcePositionText(int absolutePosition, qint64 passedCount);

}  // namespace assembly
