#pragma once

#include <QStringList>
#include <optional>
#include <vector>

#include "medium/medium_fit.h"

namespace engine {
class Database;
class Recordset;
}  // namespace engine

namespace shell {

// The media recorded as they really are, by a compilation's format (any letter case): MD; a
// cassette; an audio CD on CD-R or CD-RW. Every other format has only the capacity rule.
enum class MediumKind { MiniDisc, Cassette, AudioCd, Other };
MediumKind mediumKindOf(const QString& format);

// How the tracks fit the medium as it is recorded, a line each, for the compilation's format:
// an MD's modes and the least one it needs (the chosen mode first, when there is one), a
// cassette's sides and the turn that evens them most, an audio CD on 74 and 80 minute discs.
QStringList mediumFitLines(const QString& format, int lengthMinutes,
                           const std::vector<medium::Track>& tracks,
                           std::optional<medium::MdMode> chosenMode = std::nullopt);

// Balancing a cassette's sides: refused for other formats, and when no order fits both sides.
inline const QString kOnlyCassettesHaveSides =
    QStringLiteral("Only a cassette has sides to balance.");
inline const QString kTracksFitNoSides = QStringLiteral("The tracks do not fit both sides.");

// A compilation's tracks in their running order: from rows over its CompilationTrack rows
// (read again from the first), or from the database.
std::vector<medium::Track> mediumTracks(engine::Recordset& rows);
std::vector<medium::Track> mediumTracks(engine::Database& database, qint64 compilationId);

}  // namespace shell
