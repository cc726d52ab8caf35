#include "assembly/cover_composer.h"

#include <algorithm>

#include "engine/database.h"
#include "engine/recordset.h"
#include "engine/transaction.h"
#include "query/time_text.h"
#include "store/compilation_queries.h"

namespace assembly {

namespace {

const QString kPerformerColumn = QStringLiteral("Track_Artist_Name");

struct Separators {
    QString line;        // between entries
    QString afterTrack;  // after "n." of a "ps" line
    int hangingIndentTwips = 0;
};

Separators separatorsFor(bool cdRom, CoverMode mode) {
    if (cdRom) {
        return {QStringLiteral("\r\n"), QStringLiteral("\t"), kCoverTabStopTwips};
    }
    if (mode == CoverMode::PerformerSong) {
        return {QStringLiteral("  "), QStringLiteral(" "), 0};
    }
    return {QStringLiteral(" / "), QString(), 0};
}

// Largest play time first. Taking the ascending order from its end puts performers of equal
// time in the reverse of the statement's order.
std::vector<CoverRow> byDecreasingTime(std::vector<CoverRow> rows) {
    std::stable_sort(rows.begin(), rows.end(),
                     [](const CoverRow& a, const CoverRow& b) { return a.seconds < b.seconds; });
    std::reverse(rows.begin(), rows.end());
    return rows;
}

// Appends one entry; the bold range covers the performer and the two characters after it.
class CoverWriter {
  public:
    explicit CoverWriter(ComposedCover& cover) : cover_(cover) {}

    void append(const QString& separator, const QString& beforePerformer, const QString& performer,
                const QString& afterPerformer) {
        if (!first_) {
            cover_.text += separator;
        }
        first_ = false;
        const int start = int(cover_.text.size() + beforePerformer.size());
        cover_.text += beforePerformer + performer + afterPerformer;
        if (recordsBold_ && cover_.bold.size() < kMaxBoldRanges) {
            cover_.bold.append({start, int(performer.size()) + 2});
        }
    }
    void recordBold(bool on) { recordsBold_ = on; }

  private:
    ComposedCover& cover_;
    bool first_ = true;
    bool recordsBold_ = true;
};

QString statementHead(CoverMode mode) {
    switch (mode) {
        case CoverMode::Performer:
            return QStringLiteral(
                "SELECT DISTINCTROW CompilationTrack.CompilationID_F1, "
                "CompilationTrack.ArtistSort, "
                "                   CompilationTrack.Track_Artist_Name, "
                "                   SUM(CompilationTrack.Length) as LengthSum ");
        case CoverMode::PerformerAlbum:
            return QStringLiteral(
                "SELECT DISTINCTROW CompilationTrack.CompilationID_F1, "
                "CompilationTrack.ArtistSort, "
                "                   CompilationTrack.Track_Artist_Name, "
                "CompilationTrack.Album_Title, "
                "                   SUM(CompilationTrack.Length) as LengthSum ");
        case CoverMode::PerformerSong:
            break;
    }
    return QStringLiteral(
        "SELECT DISTINCTROW CompilationTrack.CompilationID_F1, CompilationTrack.TrackNo, "
        "                   CompilationTrack.Track_Artist_Name, CompilationTrack.Track_Title, "
        "                   CompilationTrack.Length ");
}

QString statementGrouping(CoverMode mode) {
    switch (mode) {
        case CoverMode::Performer:
            return QStringLiteral(
                "          GROUP BY CompilationTrack.CompilationID_F1, "
                "                   CompilationTrack.ArtistSort, "
                "CompilationTrack.Track_Artist_Name ");
        case CoverMode::PerformerAlbum:
            return QStringLiteral(
                "          GROUP BY CompilationTrack.CompilationID_F1, "
                "                   CompilationTrack.ArtistSort, "
                "CompilationTrack.Track_Artist_Name, "
                "                   CompilationTrack.Album_Title ");
        case CoverMode::PerformerSong:
            break;
    }
    return QStringLiteral(
        "          GROUP BY CompilationTrack.CompilationID_F1, "
        "                   CompilationTrack.TrackNo, CompilationTrack.Track_Artist_Name, "
        "                   CompilationTrack.Track_Title, CompilationTrack.Length ");
}

void composePerformers(const std::vector<CoverRow>& rows, const Separators& separators,
                       ComposedCover& cover) {
    CoverWriter writer(cover);
    writer.recordBold(false);  // a list of performers has nothing bold
    for (const CoverRow& row : rows) {
        writer.append(separators.line, QString(), row.performer, QString());
    }
    cover.text += QStringLiteral(" \n");
}

void composePerformerAlbums(const std::vector<CoverRow>& rows, const Separators& separators,
                            ComposedCover& cover) {
    CoverWriter writer(cover);
    for (const CoverRow& row : rows) {
        writer.append(separators.line, QString(), row.performer, QStringLiteral(": ") + row.title);
    }
    cover.text += QStringLiteral(" \n");
}

void composePerformerSongs(const std::vector<CoverRow>& rows, const Separators& separators,
                           bool cdRom, ComposedCover& cover) {
    CoverWriter writer(cover);
    const QString middle = cdRom ? QStringLiteral("   ") : QStringLiteral(": ");
    for (const CoverRow& row : rows) {
        const QString tail =
            cdRom ? QStringLiteral("  [") + coverTimeText(double(row.seconds)) + QLatin1Char(']')
                  : QString();
        writer.append(separators.line, row.trackNo + QLatin1Char('.') + separators.afterTrack,
                      row.performer, middle + row.title + tail);
    }
    cover.text += QLatin1Char('\n');
    cover.setsParagraphs = true;
    cover.hangingIndentTwips = separators.hangingIndentTwips;
}

QString titleColumn(CoverMode mode) {
    switch (mode) {
        case CoverMode::PerformerAlbum:
            return QStringLiteral("Album_Title");
        case CoverMode::PerformerSong:
            return QStringLiteral("Track_Title");
        case CoverMode::Performer:
            break;
    }
    return QString();
}

}  // namespace

std::optional<CoverMode> coverModeFromText(const QString& text) {
    const QString lower = text.toLower();
    if (lower == QLatin1String("p"))
        return CoverMode::Performer;
    if (lower == QLatin1String("pa"))
        return CoverMode::PerformerAlbum;
    if (lower == QLatin1String("ps"))
        return CoverMode::PerformerSong;
    return std::nullopt;
}

QString coverModeText(CoverMode mode) {
    static const QString texts[] = {QStringLiteral("p"), QStringLiteral("pa"),
                                    QStringLiteral("ps")};
    return texts[static_cast<int>(mode)];
}

QString coverStatement(CoverMode mode, qint64 compilationId) {
    return statementHead(mode) +
           QStringLiteral(
               "              FROM Compilation LEFT JOIN CompilationTrack ON "
               "                   Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
               "             WHERE CompilationTrack.CompilationID_F1 = ") +
           QString::number(compilationId) + statementGrouping(mode);
}

QString coverTimeText(double seconds) {
    const QStringList parts = query::formatTime(seconds).split(QLatin1Char(':'));
    return QString::number(parts.value(1).toInt()) + QLatin1Char(':') + parts.value(2);
}

ComposedCover composeCoverText(CoverMode mode, const std::vector<CoverRow>& rows,
                               const QString& format, bool byTime) {
    const bool cdRom = store::isCdRomCover(format);
    const Separators separators = separatorsFor(cdRom, mode);
    const bool timeOrder = byTime && mode != CoverMode::PerformerSong;
    const std::vector<CoverRow> ordered = timeOrder ? byDecreasingTime(rows) : rows;
    ComposedCover cover;
    switch (mode) {
        case CoverMode::Performer:
            composePerformers(ordered, separators, cover);
            break;
        case CoverMode::PerformerAlbum:
            composePerformerAlbums(ordered, separators, cover);
            break;
        case CoverMode::PerformerSong:
            composePerformerSongs(ordered, separators, cdRom, cover);
            break;
    }
    return cover;
}

std::vector<CoverRow> readCoverRows(engine::Database& database, CoverMode mode,
                                    qint64 compilationId) {
    engine::Recordset rows = database.openRecordset(coverStatement(mode, compilationId),
                                                    engine::RecordsetType::Snapshot);
    const bool songs = mode == CoverMode::PerformerSong;
    const QString title = titleColumn(mode);
    const QString seconds = songs ? QStringLiteral("Length") : QStringLiteral("LengthSum");
    std::vector<CoverRow> result;
    for (; !rows.eof(); rows.moveNext()) {
        CoverRow row;
        row.performer = rows.value(kPerformerColumn).toString();
        row.title = title.isEmpty() ? QString() : rows.value(title).toString();
        row.seconds = rows.value(seconds).toLongLong();
        row.trackNo = songs ? rows.value(QStringLiteral("TrackNo")).toString() : QString();
        result.push_back(row);
    }
    return result;
}

ComposedCover retrieveCoverData(engine::Database& database, qint64 compilationId, CoverMode mode,
                                const QString& format, bool byTime) {
    engine::ScopedTransaction transaction(database);
    const ComposedCover cover =
        composeCoverText(mode, readCoverRows(database, mode, compilationId), format, byTime);
    engine::Recordset compilation = database.openRecordset(
        QStringLiteral("SELECT CoverMemo FROM Compilation WHERE CompilationID_P = ") +
        QString::number(compilationId));
    compilation.edit();  // no such compilation: error 3021, nothing changes
    compilation.setValue(QStringLiteral("CoverMemo"), cover.text);
    compilation.update();
    transaction.commit();
    return cover;
}

}  // namespace assembly
