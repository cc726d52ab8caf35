#include "cli/compilation_lookup.h"

#include "engine/database.h"
#include "query/field_values.h"

namespace cli {

std::optional<Compilation> findCompilation(engine::Database& database, const QString& name,
                                           Streams streams) {
    engine::Recordset row = database.openRecordset(
        QStringLiteral("SELECT CompilationID_P, C_Length, SumTrack, SumTime FROM Compilation "
                       "WHERE Name='") +
            query::escapeSql(QStringLiteral("AVOID"), name) + QStringLiteral("'"),
        engine::RecordsetType::Snapshot);
    if (row.eof()) {
        streams.err << "There is no compilation named \"" << name << "\"." << Qt::endl;
        return std::nullopt;
    }
    return Compilation{row.value(0).toLongLong(),
                       row.value(1).toInt(),
                       {row.value(2).toInt(), row.value(3).toLongLong()}};
}

int noSuchTrack(engine::Database& database, const Compilation& compilation, const QString& name,
                const QString& trackNo, Streams streams) {
    const int count = assembly::countTracks(database, compilation.id).trackCount;
    streams.err << "\"" << trackNo << "\" is no track number of \"" << name << "\": "
                << (count == 0 ? QStringLiteral("it has no tracks.")
                               : QStringLiteral("its tracks are 1 to %1.").arg(count))
                << Qt::endl;
    return 1;
}

}  // namespace cli
