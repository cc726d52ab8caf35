#pragma once

#include <QString>
#include <optional>
#include <vector>

// How a compilation's tracks fit the medium as it is really recorded: a MiniDisc in its modes, a
// cassette's two sides, an audio CD. Beside the picker's red/green rule, never instead of it.
// Pure arithmetic on whole seconds; nothing here reads the database or draws.
namespace medium {

struct Track {
    qint64 seconds = 0;
    QString performer;
    QString title;
};

// A MiniDisc's length is its SP time. LP2 and mono hold twice as much, LP4 four times; each
// track takes whole blocks of 2 s (SP), 4 s (LP2, mono) or 8 s (LP4) of the mode's time.
enum class MdMode { Sp, Lp2, Lp4, Mono };
inline constexpr MdMode kMdModes[] = {MdMode::Sp, MdMode::Lp2, MdMode::Lp4, MdMode::Mono};

struct MdModeFit {
    MdMode mode = MdMode::Sp;
    qint64 capacity = 0;                             // seconds of the mode's time
    qint64 used = 0;                                 // the tracks, each rounded up to whole blocks
    qint64 left() const { return capacity - used; }  // negative: over by that much
};

inline constexpr int kMdMaxTracks = 254;
inline constexpr int kMdTitleBudget = 1700;  // characters of "Performer - Title" for all tracks

struct MiniDiscFit {
    std::vector<MdModeFit> modes;     // SP, LP2, LP4, mono
    std::optional<MdMode> leastMode;  // the first of SP, LP2, LP4 that holds the tracks
    bool tooManyTracks = false;       // more than kMdMaxTracks
    int titleCharacters = 0;          // of every track's "Performer - Title"
    bool titlesOverBudget() const { return titleCharacters > kMdTitleBudget; }
};

MiniDiscFit fitMiniDisc(int lengthMinutes, const std::vector<Track>& tracks);
QString mdModeName(MdMode mode);  // "SP", "LP2", "LP4", "Mono"
std::optional<MdMode> mdModeNamed(const QString& name);

// A cassette's length counts both sides (a C60 has two sides of 30 minutes). Side A takes the
// running order up to the first track that does not fit on it; that track and the rest go to B.
struct CassetteSides {
    qint64 sideCapacity = 0;
    qint64 sideA = 0;                  // seconds on side A
    qint64 sideB = 0;                  // seconds on side B (may exceed the side)
    std::optional<int> crossingTrack;  // index of the track that would cross the end of side A
    // The turn that evens the sides most in this running order: after evenTurn tracks, both
    // sides within their length (nothing when no turn fits both), with the sides' times then.
    std::optional<int> evenTurn;
    qint64 evenSideA = 0;
    qint64 evenSideB = 0;
    qint64 difference() const { return sideA > sideB ? sideA - sideB : sideB - sideA; }
};

CassetteSides splitCassette(int lengthMinutes, const std::vector<Track>& tracks);

// Sides as balanced as they can be: side A's tracks first and side B's after (indices into the
// tracks), each side keeping the tracks' relative order, both sides within their length and
// differing as little as possible. The tape is turned after sideATracks tracks, which may be
// before side A is full. Nothing when no choice of tracks fits both sides.
struct BalancedSides {
    std::vector<int> order;
    int sideATracks = 0;
    qint64 sideA = 0;
    qint64 sideB = 0;
};

std::optional<BalancedSides> balanceCassette(int lengthMinutes, const std::vector<Track>& tracks);

// An audio CD: 75 frames a second and a pause of 2 s before each track, the first included.
inline constexpr int kCdFramesPerSecond = 75;
inline constexpr int kCdPauseSeconds = 2;

struct AudioCdFit {
    qint64 usedFrames = 0;
    qint64 leftOn74 = 0;  // seconds left (negative: over) on a 74 minute disc
    qint64 leftOn80 = 0;
};

AudioCdFit fitAudioCd(const std::vector<Track>& tracks);

}  // namespace medium
