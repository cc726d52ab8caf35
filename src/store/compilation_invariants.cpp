#include "store/compilation_invariants.h"

#include <QMap>
#include <QVariant>
#include <algorithm>
#include <vector>

#include "engine/database.h"
#include "engine/recordset.h"
#include "engine/transaction.h"

namespace store {

namespace {

// A compilation's tracks as the file holds them.
struct TrackFacts {
    qint64 count = 0;
    qint64 totalLength = 0;
    std::vector<QVariant> numbers;  // in ascending order, Null first
};

struct CompilationFacts {
    qint64 id = 0;
    QString name;
    QVariant sumTrack;
    QVariant sumTime;
};

QMap<qint64, TrackFacts> readTracks(engine::Database& database) {
    engine::Recordset rows = database.openRecordset(
        QStringLiteral("SELECT CompilationID_F1, TrackNo, Length FROM CompilationTrack "
                       "ORDER BY CompilationID_F1, TrackNo"),
        engine::RecordsetType::Snapshot);
    QMap<qint64, TrackFacts> tracks;
    for (; !rows.eof(); rows.moveNext()) {
        TrackFacts& facts = tracks[rows.value(0).toLongLong()];
        ++facts.count;
        facts.totalLength += rows.value(2).toLongLong();
        facts.numbers.push_back(rows.value(1));
    }
    return tracks;
}

std::vector<CompilationFacts> readCompilations(engine::Database& database) {
    engine::Recordset rows = database.openRecordset(
        QStringLiteral("SELECT CompilationID_P, Name, SumTrack, SumTime FROM Compilation "
                       "ORDER BY Name, CompilationID_P"),
        engine::RecordsetType::Snapshot);
    std::vector<CompilationFacts> compilations;
    for (; !rows.eof(); rows.moveNext()) {
        compilations.push_back(
            {rows.value(0).toLongLong(), rows.value(1).toString(), rows.value(2), rows.value(3)});
    }
    return compilations;
}

bool numberedOneToN(const std::vector<QVariant>& numbers) {
    for (size_t i = 0; i < numbers.size(); ++i) {
        if (numbers[i].isNull() || numbers[i].toLongLong() != qint64(i) + 1)
            return false;
    }
    return true;
}

bool holds(const QVariant& stored, qint64 expected) {
    return !stored.isNull() && stored.toLongLong() == expected;
}

QString shown(const QVariant& value) {
    return value.isNull() ? QStringLiteral("Null") : value.toString();
}

// The numbers as a list, the first ones of a long list only.
QString numberList(const std::vector<QVariant>& numbers) {
    constexpr size_t kShown = 12;
    QStringList texts;
    for (size_t i = 0; i < std::min(numbers.size(), kShown); ++i)
        texts << shown(numbers[i]);
    if (numbers.size() > kShown)
        texts << QStringLiteral("...");
    return texts.join(QStringLiteral(", "));
}

QString compilationLabel(const CompilationFacts& compilation) {
    return QStringLiteral("Compilation '%1'").arg(compilation.name);
}

void storeSum(engine::Database& database, const char* column, qint64 compilationId, qint64 value) {
    database.execute(QStringLiteral("UPDATE Compilation SET %1=%2 WHERE CompilationID_P=%3")
                         .arg(QLatin1String(column))
                         .arg(value)
                         .arg(compilationId));
}

struct SumRule {
    const char* column;
    QVariant stored;
    qint64 expected;
    QString reported;
};

// The lines of one compilation; with repair, its rows are mended.
QStringList checkCompilation(engine::Database& database, const CompilationFacts& compilation,
                             const TrackFacts& tracks, bool repair) {
    QStringList lines;
    const QString label = compilationLabel(compilation);
    if (!numberedOneToN(tracks.numbers)) {
        if (repair)
            renumberTracks(database, compilation.id);
        lines << (repair ? QStringLiteral("%1: tracks renumbered 1 to %2 (were %3).")
                         : QStringLiteral("%1: tracks are numbered %3, not 1 to %2."))
                     .arg(label)
                     .arg(tracks.count)
                     .arg(numberList(tracks.numbers));
    }
    // The two sums, each with the words that report it broken.
    const SumRule sums[] = {
        {"SumTrack", compilation.sumTrack, tracks.count,
         QStringLiteral("%1: SumTrack is %2, but it has %3 track(s).")},
        {"SumTime", compilation.sumTime, tracks.totalLength,
         QStringLiteral("%1: SumTime is %2, but its tracks last %3 second(s).")}};
    for (const SumRule& sum : sums) {
        if (holds(sum.stored, sum.expected))
            continue;
        if (repair)
            storeSum(database, sum.column, compilation.id, sum.expected);
        lines << (repair ? QStringLiteral("%1: %2 set from %3 to %4.")
                               .arg(label, QLatin1String(sum.column), shown(sum.stored))
                               .arg(sum.expected)
                         : sum.reported.arg(label, shown(sum.stored)).arg(sum.expected));
    }
    return lines;
}

QStringList checkOrphans(engine::Database& database, const QMap<qint64, TrackFacts>& orphans,
                         bool repair) {
    QStringList lines;
    for (auto it = orphans.begin(); it != orphans.end(); ++it) {
        if (repair) {
            database.execute(
                QStringLiteral("DELETE FROM CompilationTrack WHERE CompilationID_F1=") +
                QString::number(it.key()));
        }
        lines << (repair ? QStringLiteral("Removed %1 track(s) of compilation %2, which does not "
                                          "exist.")
                         : QStringLiteral("%1 track(s) belong to compilation %2, which does not "
                                          "exist."))
                     .arg(it->count)
                     .arg(it.key());
    }
    return lines;
}

}  // namespace

QStringList checkCompilationInvariants(engine::Database& database, InvariantAction action) {
    const bool repair = action == InvariantAction::Repair;
    QMap<qint64, TrackFacts> tracks = readTracks(database);
    const std::vector<CompilationFacts> compilations = readCompilations(database);
    engine::ScopedTransaction transaction(database);
    QStringList lines;
    for (const CompilationFacts& compilation : compilations)
        lines << checkCompilation(database, compilation, tracks.take(compilation.id), repair);
    lines << checkOrphans(database, tracks, repair);  // what is left has no compilation
    transaction.commit();
    return lines;
}

void renumberTracks(engine::Database& database, qint64 compilationId) {
    engine::Recordset tracks = database.openRecordset(
        QStringLiteral("SELECT TrackNo FROM CompilationTrack WHERE CompilationID_F1=") +
        QString::number(compilationId) + QStringLiteral(" ORDER BY TrackNo"));
    int trackNo = 1;
    for (; !tracks.eof(); tracks.moveNext(), ++trackNo) {
        if (tracks.value(0).toInt() != trackNo || tracks.value(0).isNull()) {
            tracks.edit();
            tracks.setValue(0, trackNo);
            tracks.update();
        }
    }
}

}  // namespace store
