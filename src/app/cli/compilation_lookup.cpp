#include "cli/compilation_lookup.h"

#include "engine/database.h"
#include "engine/recordset.h"
#include "query/field_values.h"

namespace cli {

std::optional<Compilation> findCompilation(engine::Database& database, const QString& name,
                                           Streams streams) {
    engine::Recordset row = database.openRecordset(
        QStringLiteral(
            "SELECT CompilationID_P, C_Length, SumTrack, SumTime, Format FROM Compilation "
            "WHERE Name='") +
            query::escapeSql(query::EscapeFor::Literal, name) + QStringLiteral("'"),
        engine::RecordsetType::Snapshot);
    if (row.eof()) {
        streams.err << "There is no compilation named \"" << name << "\"." << Qt::endl;
        return std::nullopt;
    }
    return Compilation{row.value(0).toLongLong(),
                       row.value(1).toInt(),
                       {row.value(2).toInt(), row.value(3).toLongLong()},
                       row.value(4).toString()};
}

int noSuchTrack(engine::Database& database, const Compilation& compilation, const QString& name,
                const QString& trackNo, Streams streams) {
    engine::Recordset numbers = database.openRecordset(
        QStringLiteral("SELECT Count(*), Min(TrackNo), Max(TrackNo) FROM CompilationTrack "
                       "WHERE CompilationID_F1 = %1")
            .arg(compilation.id),
        engine::RecordsetType::Snapshot);
    const int count = numbers.value(0).toInt();
    const int first = numbers.value(1).toInt();
    const int last = numbers.value(2).toInt();
    QString tracks = QStringLiteral("its tracks are %1 to %2.").arg(first).arg(last);
    if (count == 0) {
        tracks = QStringLiteral("it has no tracks.");
    } else if (first != 1 || last != count) {
        // A file of an earlier version, with gaps in its numbers.
        tracks = QStringLiteral("its %1 tracks are numbered %2 to %3, not 1 to %1.")
                     .arg(count)
                     .arg(first)
                     .arg(last);
    }
    streams.err << "\"" << trackNo << "\" is no track number of \"" << name << "\": " << tracks
                << Qt::endl;
    return 1;
}

}  // namespace cli
