#include "shell/medium_text.h"

#include "engine/database.h"
#include "engine/recordset.h"
#include "query/time_text.h"
#include "store/compilation_queries.h"

namespace shell {

namespace {

QString time(qint64 seconds) {
    return query::formatTime(double(seconds));
}

// "00:13:20 left" or "over by 00:01:00".
QString leftOrOver(qint64 left) {
    return left >= 0 ? time(left) + QStringLiteral(" left")
                     : QStringLiteral("over by ") + time(-left);
}

QStringList miniDiscLines(int lengthMinutes, const std::vector<medium::Track>& tracks,
                          std::optional<medium::MdMode> chosenMode) {
    const medium::MiniDiscFit fit = medium::fitMiniDisc(lengthMinutes, tracks);
    QStringList lines;
    for (const medium::MdModeFit& mode : fit.modes) {
        if (mode.mode == chosenMode) {
            lines << QStringLiteral("Recorded in %1: %2")
                         .arg(medium::mdModeName(mode.mode), leftOrOver(mode.left()));
        }
    }
    for (const medium::MdModeFit& mode : fit.modes) {
        lines << QStringLiteral("MD %1: %2")
                     .arg(medium::mdModeName(mode.mode), leftOrOver(mode.left()));
    }
    lines << (fit.leastMode
                  ? QStringLiteral("Needs at least: ") + medium::mdModeName(*fit.leastMode)
                  : QStringLiteral("Fits in no mode"));
    if (fit.tooManyTracks) {
        lines << QStringLiteral("More than %1 tracks").arg(medium::kMdMaxTracks);
    }
    if (fit.titlesOverBudget()) {
        lines << QStringLiteral("Titles of %1 characters, over the disc's %2")
                     .arg(fit.titleCharacters)
                     .arg(medium::kMdTitleBudget);
    }
    return lines;
}

QStringList cassetteLines(int lengthMinutes, const std::vector<medium::Track>& tracks) {
    const medium::CassetteSides sides = medium::splitCassette(lengthMinutes, tracks);
    QStringList lines{QStringLiteral("Side A: %1, side B: %2 (%3 a side); the sides differ by %4")
                          .arg(time(sides.sideA), time(sides.sideB), time(sides.sideCapacity),
                               time(sides.difference()))};
    if (sides.crossingTrack) {
        lines << QStringLiteral("Track %1 crosses the end of side A").arg(*sides.crossingTrack + 1);
    }
    if (sides.evenTurn) {
        lines << QStringLiteral("Most even: turn after track %1 (side A %2, side B %3)")
                     .arg(*sides.evenTurn)
                     .arg(time(sides.evenSideA), time(sides.evenSideB));
    } else {
        lines << kTracksFitNoSides;
    }
    return lines;
}

QStringList audioCdLines(const std::vector<medium::Track>& tracks) {
    const medium::AudioCdFit fit = medium::fitAudioCd(tracks);
    return {QStringLiteral("Audio CD: %1 on 74 min, %2 on 80 min")
                .arg(leftOrOver(fit.leftOn74), leftOrOver(fit.leftOn80))};
}

}  // namespace

MediumKind mediumKindOf(const QString& format) {
    const QString kind = format.trimmed().toLower();
    if (kind == QLatin1String("md")) {
        return MediumKind::MiniDisc;
    }
    if (kind == QLatin1String("cassette")) {
        return MediumKind::Cassette;
    }
    if (kind == QLatin1String("cd-r") || kind == QLatin1String("cd-rw")) {
        return MediumKind::AudioCd;
    }
    return MediumKind::Other;
}

QStringList mediumFitLines(const QString& format, int lengthMinutes,
                           const std::vector<medium::Track>& tracks,
                           std::optional<medium::MdMode> chosenMode) {
    switch (mediumKindOf(format)) {
        case MediumKind::MiniDisc:
            return miniDiscLines(lengthMinutes, tracks, chosenMode);
        case MediumKind::Cassette:
            return cassetteLines(lengthMinutes, tracks);
        case MediumKind::AudioCd:
            return audioCdLines(tracks);
        case MediumKind::Other:
            break;
    }
    return {};
}

std::vector<medium::Track> mediumTracks(engine::Recordset& rows) {
    std::vector<medium::Track> tracks;
    if (rows.recordCount() == 0) {
        return tracks;  // no first row to move to
    }
    for (rows.moveFirst(); !rows.eof(); rows.moveNext()) {
        tracks.push_back({rows.value(QStringLiteral("Length")).toLongLong(),
                          rows.value(QStringLiteral("Track_Artist_Name")).toString(),
                          rows.value(QStringLiteral("Track_Title")).toString()});
    }
    return tracks;
}

std::vector<medium::Track> mediumTracks(engine::Database& database, qint64 compilationId) {
    engine::Recordset rows = database.openRecordset(
        store::standardStatement(QStringLiteral("compilationtrack"), compilationId),
        engine::RecordsetType::Snapshot);
    return mediumTracks(rows);
}

}  // namespace shell
