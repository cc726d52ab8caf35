#include "shell/medium_text.h"

#include "query/time_text.h"

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

QStringList miniDiscLines(int lengthMinutes, const std::vector<medium::Track>& tracks) {
    const medium::MiniDiscFit fit = medium::fitMiniDisc(lengthMinutes, tracks);
    QStringList lines;
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
    return lines;
}

QStringList audioCdLines(const std::vector<medium::Track>& tracks) {
    const medium::AudioCdFit fit = medium::fitAudioCd(tracks);
    return {QStringLiteral("Audio CD: %1 on 74 min, %2 on 80 min")
                .arg(leftOrOver(fit.leftOn74), leftOrOver(fit.leftOn80))};
}

}  // namespace

QStringList mediumFitLines(const QString& format, int lengthMinutes,
                           const std::vector<medium::Track>& tracks) {
    const QString kind = format.trimmed().toLower();
    if (kind == QLatin1String("md")) {
        return miniDiscLines(lengthMinutes, tracks);
    }
    if (kind == QLatin1String("cassette")) {
        return cassetteLines(lengthMinutes, tracks);
    }
    if (kind == QLatin1String("cd-r") || kind == QLatin1String("cd-rw")) {
        return audioCdLines(tracks);
    }
    return {};
}

}  // namespace shell
