#include "assembly/compilation_record.h"

#include "engine/database.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "engine/transaction.h"

namespace assembly {

CompilationRecord readCompilation(engine::Database& database, qint64 compilationId) {
    engine::Recordset row = database.openRecordset(
        QStringLiteral("SELECT Name, Format, C_Length, SumTrack, SumTime FROM Compilation "
                       "WHERE CompilationID_P=") +
            QString::number(compilationId),
        engine::RecordsetType::Snapshot);
    if (row.recordCount() == 0) {
        throw engine::noCurrentRecordError();
    }
    return CompilationRecord{compilationId,
                             row.value(0).toString(),
                             row.value(1).toString(),
                             row.value(2).toInt(),
                             {row.value(3).toInt(), row.value(4).toLongLong()}};
}

void deleteCompilation(engine::Database& database, qint64 compilationId) {
    engine::ScopedTransaction transaction(database);
    // Its tracks go with it: CompilationTrack's key cascades the deletion.
    if (database.execute(QStringLiteral("DELETE FROM Compilation WHERE CompilationID_P=") +
                         QString::number(compilationId)) == 0) {
        throw engine::noCurrentRecordError();
    }
    transaction.commit();
}

}  // namespace assembly
