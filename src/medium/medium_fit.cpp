#include "medium/medium_fit.h"

#include <array>
#include <cstdlib>

namespace medium {

namespace {

struct ModeRule {
    MdMode mode;
    int factor;  // the mode's time per second of SP time
    int block;   // seconds of the mode's time a block holds
};

constexpr std::array<ModeRule, 4> kModes{{
    {MdMode::Sp, 1, 2},
    {MdMode::Lp2, 2, 4},
    {MdMode::Lp4, 4, 8},
    {MdMode::Mono, 2, 4},
}};

qint64 roundUpToBlock(qint64 seconds, int block) {
    return (seconds + block - 1) / block * block;
}

qint64 totalSeconds(const std::vector<Track>& tracks) {
    qint64 total = 0;
    for (const Track& track : tracks) {
        total += track.seconds;
    }
    return total;
}

}  // namespace

QString mdModeName(MdMode mode) {
    switch (mode) {
        case MdMode::Sp:
            return QStringLiteral("SP");
        case MdMode::Lp2:
            return QStringLiteral("LP2");
        case MdMode::Lp4:
            return QStringLiteral("LP4");
        case MdMode::Mono:
            return QStringLiteral("Mono");
    }
    return {};
}

std::optional<MdMode> mdModeNamed(const QString& name) {
    for (const MdMode mode : kMdModes) {
        if (mdModeName(mode) == name) {
            return mode;
        }
    }
    return std::nullopt;
}

MiniDiscFit fitMiniDisc(int lengthMinutes, const std::vector<Track>& tracks) {
    MiniDiscFit fit;
    for (const ModeRule& rule : kModes) {
        MdModeFit mode{rule.mode, qint64(lengthMinutes) * 60 * rule.factor, 0};
        for (const Track& track : tracks) {
            mode.used += roundUpToBlock(track.seconds, rule.block);
        }
        if (!fit.leastMode && rule.mode != MdMode::Mono && mode.left() >= 0) {
            fit.leastMode = rule.mode;
        }
        fit.modes.push_back(mode);
    }
    fit.tooManyTracks = int(tracks.size()) > kMdMaxTracks;
    for (const Track& track : tracks) {
        fit.titleCharacters += int(track.performer.size() + 3 + track.title.size());
    }
    return fit;
}

CassetteSides splitCassette(int lengthMinutes, const std::vector<Track>& tracks) {
    CassetteSides sides;
    sides.sideCapacity = qint64(lengthMinutes) * 60 / 2;
    for (int i = 0; i < int(tracks.size()); ++i) {
        if (!sides.crossingTrack && sides.sideA + tracks[i].seconds <= sides.sideCapacity) {
            sides.sideA += tracks[i].seconds;
            continue;
        }
        if (!sides.crossingTrack) {
            sides.crossingTrack = i;
        }
        sides.sideB += tracks[i].seconds;
    }
    const qint64 total = sides.sideA + sides.sideB;
    qint64 sideA = 0;
    for (int turn = 0; turn <= int(tracks.size()); ++turn) {
        const qint64 sideB = total - sideA;
        const bool fits = sideA <= sides.sideCapacity && sideB <= sides.sideCapacity;
        if (fits &&
            (!sides.evenTurn || qAbs(sideA - sideB) < qAbs(sides.evenSideA - sides.evenSideB))) {
            sides.evenTurn = turn;
            sides.evenSideA = sideA;
            sides.evenSideB = sideB;
        }
        if (turn < int(tracks.size())) {
            sideA += tracks[size_t(turn)].seconds;
        }
    }
    return sides;
}

// reach[i][sum]: the first i tracks can put sum seconds on side A (within the side). Kept for
// every i, so that the choice of tracks can be read back from the best sum.
std::optional<BalancedSides> balanceCassette(int lengthMinutes, const std::vector<Track>& tracks) {
    const qint64 side = qint64(lengthMinutes) * 60 / 2;
    const qint64 total = totalSeconds(tracks);
    const size_t n = tracks.size();
    std::vector<std::vector<bool>> reach(n + 1, std::vector<bool>(size_t(side) + 1, false));
    reach[0][0] = true;
    for (size_t i = 0; i < n; ++i) {
        for (qint64 sum = 0; sum <= side; ++sum) {
            if (!reach[i][size_t(sum)]) {
                continue;
            }
            reach[i + 1][size_t(sum)] = true;  // the track goes to side B
            if (sum + tracks[i].seconds <= side) {
                reach[i + 1][size_t(sum + tracks[i].seconds)] = true;
            }
        }
    }
    std::optional<qint64> best;
    for (qint64 sum = 0; sum <= side; ++sum) {
        if (reach[n][size_t(sum)] && total - sum <= side &&
            (!best || std::llabs(2 * sum - total) < std::llabs(2 * *best - total))) {
            best = sum;
        }
    }
    if (!best) {
        return std::nullopt;
    }
    std::vector<bool> onA(n, false);
    for (size_t i = n, sum = size_t(*best); i > 0; --i) {
        if (!reach[i - 1][sum]) {  // only reachable with track i - 1 on side A
            onA[i - 1] = true;
            sum -= size_t(tracks[i - 1].seconds);
        }
    }
    BalancedSides balanced;
    balanced.sideA = *best;
    balanced.sideB = total - *best;
    for (const bool sideA : {true, false}) {
        for (size_t i = 0; i < n; ++i) {
            if (onA[i] == sideA) {
                balanced.order.push_back(int(i));
            }
        }
        if (sideA) {
            balanced.sideATracks = int(balanced.order.size());
        }
    }
    return balanced;
}

AudioCdFit fitAudioCd(const std::vector<Track>& tracks) {
    AudioCdFit fit;
    for (const Track& track : tracks) {
        fit.usedFrames += (track.seconds + kCdPauseSeconds) * kCdFramesPerSecond;
    }
    const qint64 used = fit.usedFrames / kCdFramesPerSecond;
    fit.leftOn74 = 74 * 60 - used;
    fit.leftOn80 = 80 * 60 - used;
    return fit;
}

}  // namespace medium
