#include "store/track_files.h"

#include "engine/database.h"
#include "engine/recordset.h"

namespace store {

const QString kTrackFileColumn = QStringLiteral("TrackFile");

bool hasTrackFileColumn(engine::Database& database) {
    engine::Recordset shape =
        database.openRecordset(QStringLiteral("SELECT * FROM CompilationTrack WHERE False"),
                               engine::RecordsetType::Snapshot);
    return shape.fieldIndex(kTrackFileColumn) >= 0;
}

void ensureTrackFileColumn(engine::Database& database) {
    if (!hasTrackFileColumn(database)) {
        database.appendField(QStringLiteral("CompilationTrack"),
                             {kTrackFileColumn, engine::FieldType::Memo, 0});
    }
}

}  // namespace store
