#pragma once

#include <QString>
#include <QVector>
#include <optional>
#include <utility>

// What the covers print and which cover a compilation gets.
namespace reports {

// The message for a format without a cover.
QString noCoverMessage(const QString& format);

// The refusal for a compilation without tracks, shared by every print choice of one compilation.
inline const QString kNoTracksOnCompilation =
    QStringLiteral("The selected compilation contains no tracks");

// Why a compilation gets no cover (store::coverKindOf), in the words the print command shows;
// nothing when it gets one. The format is checked before the track count.
std::optional<QString> coverRefusal(const QString& format, int trackCount);

// A total play time as the CD-ROM cover prints it: hours without a leading zero, two-digit
// minutes and seconds (4445 gives "1:14:05").
QString playtimeText(double seconds);

// The MD track list has a performer slot for each track number up to this one; later tracks
// print without performer.
inline constexpr int kMaxPerformerSlots = 1000;

// The performers the MD track list prints, by track number: of each run of consecutive tracks
// by one performer only the last keeps the name. Tracks come as (number, performer) in print
// order.
QVector<QString> runLastPerformers(const QVector<std::pair<int, QString>>& tracks);

}  // namespace reports
