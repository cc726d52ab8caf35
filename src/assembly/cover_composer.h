#pragma once

#include <QString>
#include <QVector>
#include <optional>
#include <vector>

namespace engine {
class Database;
}

namespace assembly {

// Performers ("p"), performer and album ("pa"), performer and song ("ps"): the three cover
// buttons in their order.
enum class CoverMode { Performer, PerformerAlbum, PerformerSong };

std::optional<CoverMode> coverModeFromText(const QString& text);  // "p", "pa", "ps"
QString coverModeText(CoverMode mode);

// The statement that gives a compilation's cover rows for a mode.
QString coverStatement(CoverMode mode, qint64 compilationId);

// One row of a cover statement. seconds is LengthSum ("p", "pa") or Length ("ps"); a Null
// performer, title or length reads as empty or 0.
struct CoverRow {
    QString performer;
    QString title;  // album ("pa"), song ("ps"), empty ("p")
    qint64 seconds = 0;
    QString trackNo;  // "ps" only
};

struct BoldRange {
    int start = 0;  // 0-based; a line break "\r\n" counts two
    int length = 0;
    friend bool operator==(const BoldRange&, const BoldRange&) = default;
};

// The bold table holds this many ranges; a longer cover is composed whole, its further
// performers stay plain.
inline constexpr int kMaxBoldRanges = 300;
// The one tab stop of a "ps" cover, and the hanging indent of a CD-ROM one.
inline constexpr int kCoverTabStopTwips = 400;

struct ComposedCover {
    QString text;
    QVector<BoldRange> bold;
    // "ps" covers set their paragraphs: left indent 0, this hanging indent, the tab stop.
    bool setsParagraphs = false;
    int hangingIndentTwips = 0;
};

// A play time as the cover shows it: minutes without a leading zero and two-digit seconds;
// the hours are left out (205 gives "3:25", 3725 gives "2:05").
QString coverTimeText(double seconds);

// Composes the cover text of rows in the statement's order. byTime ("Time (decreasing)")
// orders "p" and "pa" by decreasing play time; "ps" always keeps the track order.
ComposedCover composeCoverText(CoverMode mode, const std::vector<CoverRow>& rows,
                               const QString& format, bool byTime);

// The rows of a compilation's cover statement.
std::vector<CoverRow> readCoverRows(engine::Database& database, CoverMode mode,
                                    qint64 compilationId);

// Composes a compilation's cover and stores its text as the compilation's CoverMemo, in one
// transaction; an earlier cover text is replaced.
ComposedCover retrieveCoverData(engine::Database& database, qint64 compilationId, CoverMode mode,
                                const QString& format, bool byTime);

}  // namespace assembly
