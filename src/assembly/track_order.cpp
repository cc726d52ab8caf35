#include "assembly/track_order.h"

#include <algorithm>

#include "assembly/track_picker.h"
#include "engine/database.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "engine/transaction.h"

namespace assembly {

namespace {

QString tracksSelect(qint64 compilationId) {
    return QStringLiteral("SELECT * FROM CompilationTrack WHERE CompilationID_F1=") +
           QString::number(compilationId);
}

void writeTrackNo(engine::Recordset& tracks, int trackNo) {
    const QVariant present = tracks.value(QStringLiteral("TrackNo"));
    if (!present.isNull() && present.toInt() == trackNo) {
        return;
    }
    tracks.edit();
    tracks.setValue(QStringLiteral("TrackNo"), trackNo);
    tracks.update();
}

// The number a track numbered trackNo has after track `from` moved to `to`.
int movedTrackNo(int trackNo, int from, int to) {
    if (trackNo == from) {
        return to;
    }
    if (from < to && trackNo > from && trackNo <= to) {
        return trackNo - 1;
    }
    if (to < from && trackNo >= to && trackNo < from) {
        return trackNo + 1;
    }
    return trackNo;
}

// trackNo: the number after the gaps are closed; asked: the number as the caller gave it.
void requireTrackNo(int trackNo, int trackCount, int asked) {
    if (trackNo < 1 || trackNo > trackCount) {
        throw engine::JetError(
            engine::jet::kNoCurrentRecord,
            QStringLiteral("There is no track %1 on this compilation.").arg(asked));
    }
}

// Files of earlier versions may hold numbers with gaps, twice or none: the move needs 1 to n, so
// such tracks are numbered 1 to n in their running order first, and `from` and `to` become the
// new numbers of the tracks that carried them (0 for a number no track has).
void closeGaps(engine::Database& database, qint64 compilationId, int& from, int& to) {
    engine::Recordset tracks =
        database.openRecordset(tracksSelect(compilationId) + QStringLiteral(" ORDER BY TrackNo"));
    QList<QVariant> numbers;
    for (; !tracks.eof(); tracks.moveNext()) {
        numbers << tracks.value(QStringLiteral("TrackNo"));
    }
    bool inOrder = true;
    for (qsizetype i = 0; i < numbers.size(); ++i) {
        inOrder = inOrder && !numbers[i].isNull() && numbers[i].toInt() == i + 1;
    }
    if (inOrder) {
        return;
    }
    const auto newNumber = [&numbers](int stored) {
        for (qsizetype i = 0; i < numbers.size(); ++i) {
            if (!numbers[i].isNull() && numbers[i].toInt() == stored) {
                return int(i) + 1;
            }
        }
        return 0;
    };
    from = newNumber(from);
    to = newNumber(to);
    int trackNo = 0;
    for (tracks.moveFirst(); !tracks.eof(); tracks.moveNext()) {
        writeTrackNo(tracks, ++trackNo);
    }
}

}  // namespace

int renumberBySort(engine::Database& database, qint64 compilationId, const QString& orderText) {
    engine::ScopedTransaction transaction(database);
    engine::Recordset tracks =
        database.openRecordset(tracksSelect(compilationId) + QStringLiteral(" ORDER BY TrackNo"));
    // The sorted record set breaks ties by the order it was opened in: the running order.
    tracks.setSort(orderText);
    engine::Recordset sorted = tracks.openRecordset();
    int trackNo = 0;
    for (; !sorted.eof(); sorted.moveNext()) {
        writeTrackNo(sorted, ++trackNo);
    }
    transaction.commit();
    return trackNo;
}

std::optional<medium::BalancedSides> renumberBalanced(engine::Database& database,
                                                      qint64 compilationId, int lengthMinutes) {
    engine::ScopedTransaction transaction(database);
    engine::Recordset tracks =
        database.openRecordset(tracksSelect(compilationId) + QStringLiteral(" ORDER BY TrackNo"));
    std::vector<medium::Track> running;
    for (; !tracks.eof(); tracks.moveNext()) {
        running.push_back({tracks.value(QStringLiteral("Length")).toLongLong(), {}, {}});
    }
    const std::optional<medium::BalancedSides> balanced =
        medium::balanceCassette(lengthMinutes, running);
    if (!balanced || running.empty()) {
        transaction.commit();
        return balanced;
    }
    std::vector<int> newNumber(running.size());
    for (size_t place = 0; place < balanced->order.size(); ++place) {
        newNumber[size_t(balanced->order[place])] = int(place) + 1;
    }
    int index = 0;
    for (tracks.moveFirst(); !tracks.eof(); tracks.moveNext()) {
        writeTrackNo(tracks, newNumber[size_t(index++)]);
    }
    transaction.commit();
    return balanced;
}

void moveTrack(engine::Database& database, qint64 compilationId, int from, int to) {
    engine::ScopedTransaction transaction(database);
    const int trackCount = countTracks(database, compilationId).trackCount;
    const int askedFrom = from;
    const int askedTo = to;
    closeGaps(database, compilationId, from, to);
    requireTrackNo(from, trackCount, askedFrom);
    requireTrackNo(to, trackCount, askedTo);
    if (from == to) {
        transaction.commit();  // the gaps, if there were any, stay closed
        return;
    }
    engine::Recordset tracks =
        database.openRecordset(tracksSelect(compilationId) +
                               QStringLiteral(" AND TrackNo BETWEEN %1 AND %2 ORDER BY TrackNo")
                                   .arg(std::min(from, to))
                                   .arg(std::max(from, to)));
    for (; !tracks.eof(); tracks.moveNext()) {
        writeTrackNo(tracks,
                     movedTrackNo(tracks.value(QStringLiteral("TrackNo")).toInt(), from, to));
    }
    transaction.commit();
}

int dropTargetNo(const DropGrid& grid) {
    const int row = grid.currentVisibleRow + 1;
    const bool scrolls = grid.trackCount > grid.visibleRows;
    const int target = scrolls ? grid.topTrackNo - 1 + row : row;
    return std::max(1, std::min(target, grid.trackCount));
}

}  // namespace assembly
