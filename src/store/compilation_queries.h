#pragma once

#include <QString>
#include <optional>

namespace engine {
class Database;
class Recordset;
}  // namespace engine

namespace store {

class DataControl;

// Creates CompilationTrack_Lookup, the index by which the lookup of a track already recorded
// searches every compilation by performer and title (without it, each lookup reads all tracks),
// unless the file has it, was opened read-only or is write-protected, or its CompilationTrack
// lacks those columns. Called where a file is
// opened for writing and by Compact, never by a lookup, which only reads.
void ensureTrackLookupIndex(engine::Database& database);

// The statement of a standard record source kind ("compilation", "compilationtrack",
// "albumneeded", "songoncompilation"; any case). The kinds that take a compilation id read it
// from compilationId; an unknown kind gives an empty text.
QString standardStatement(const QString& kind, std::optional<qint64> compilationId = std::nullopt);

// The row of one compilation: the columns and aliases of the standard "compilation" statement,
// for the editor and the covers. The id 0 is never given to a row, so it opens an empty set to
// add to.
QString compilationRowStatement(qint64 compilationId);

// The cover a compilation's format gets (any letter case of "MD" and "CD-ROM"): the MD strip or
// the CD-ROM inlay, whose text runs a line to a track; none for other formats.
enum class CoverKind { Md, CdRom };
std::optional<CoverKind> coverKindOf(const QString& format);
inline bool isCdRomCover(const QString& format) {
    return coverKindOf(format) == CoverKind::CdRom;
}

// Points a data control at the open database and a standard statement. The id comes from the
// CompilationID_P of compilationControl's current row; a step that fails (no current row) is
// skipped and the rest still run, so an unknown kind changes only the database name.
void setRecordSource(const QString& kind, DataControl* compilationControl, DataControl& target,
                     const QString& databasePath);

struct RecordCountText {
    QString database;  // panel 1, left-aligned
    QString count;     // panel 2, right-aligned
};

// The status bar's record count: moves to the last row so the count is complete, then back to
// the first.
RecordCountText showRecordCount(engine::Recordset& recordset, const QString& databasePath);

}  // namespace store
