#include "query/goto_lists.h"

#include "engine/database.h"
#include "engine/recordset.h"

namespace query {

namespace {

// One goto field: the pieces of its statement and the field holding the values.
struct GotoFieldRow {
    const char* key;  // the goto field lower-cased
    const char* selectList;
    const char* groupBy;
    const char* resultField;
};

// The source list statements group over TempSource; the filter goes between FROM and GROUP BY,
// so without one two blanks stand before GROUP BY.
constexpr GotoFieldRow kSourceFields[] = {
    {"artistsort", "SELECT   TempSource.ArtistSort ", " GROUP BY TempSource.ArtistSort;",
     "artistsort"},
    {"titletrack", "SELECT   TempSource.TitleTrack ", " GROUP BY TempSource.TitleTrack;",
     "titletrack"},
    {"length", "SELECT   TempSource.Length ", " GROUP BY TempSource.Length;", "Length"},
    {"live", "SELECT   TempSource.Live ", " GROUP BY TempSource.Live;", "live"},
    {"myrecorded", "SELECT   TempSource.MyRecorded ", " GROUP BY TempSource.MyRecorded;",
     "MyRecorded"},
    {"item", "SELECT   TempSource.Item ", " GROUP BY TempSource.Item;", "Item"},
    {"index", "SELECT   TempSource.Index ", " GROUP BY TempSource.Index;", "Index"},
    {"titlealbum", "SELECT   TempSource.TitleAlbum ", " GROUP BY TempSource.TitleAlbum;",
     "TitleAlbum"},
    {"albumartistsort", "SELECT   TempSource.AlbumArtistSort ",
     " GROUP BY TempSource.AlbumArtistSort;", "albumartistsort"},
    {"ratingtrack", "SELECT   TempSource.RatingTrack ", " GROUP BY TempSource.RatingTrack;",
     "RatingTrack"},
    {"version", "SELECT   TempSource.Version ", " GROUP BY TempSource.Version;", "Version"},
};

// The memo Notes can only be grouped through Mid().
constexpr GotoFieldRow kCompilationFields[] = {
    {"c_name", "SELECT   Compilation.Name ", "GROUP BY Compilation.Name;", "Name"},
    {"manufacturer", "SELECT   Compilation.Manufacturer ", "GROUP BY Compilation.Manufacturer;",
     "Manufacturer"},
    {"c_format", "SELECT   Compilation.Format ", "GROUP BY Compilation.Format;", "Format"},
    {"c_box", "SELECT   Compilation.Box ", "GROUP BY Compilation.Box;", "Box"},
    {"c_notes", "SELECT   Mid(Compilation.Notes,1) AS Notes ", "GROUP BY Mid(Compilation.Notes,1);",
     "Notes"},
    {"c_length", "SELECT   Compilation.C_Length ", "GROUP BY Compilation.C_Length;", "C_length"},
    {"c_sumtrack", "SELECT   Compilation.SumTrack ", "GROUP BY Compilation.SumTrack;", "SumTrack"},
    {"c_sumtime", "SELECT   Compilation.SumTime AS C_SumTime  ", "GROUP BY Compilation.SumTime;",
     "C_SumTime"},
    {"recdate", "SELECT   Compilation.RecDate ", "GROUP BY Compilation.RecDate;", "RecDate"},
};

template <std::size_t N>
const GotoFieldRow* findRow(const GotoFieldRow (&rows)[N], const QString& gotoField) {
    const QString key = gotoField.toLower();
    for (const GotoFieldRow& row : rows) {
        if (key == QLatin1String(row.key))
            return &row;
    }
    return nullptr;
}

GotoQuery queryOf(const GotoFieldRow& row, const QString& fromAndFilter) {
    return {QLatin1String(row.selectList) + fromAndFilter + QLatin1String(row.groupBy),
            QLatin1String(row.resultField), kindOfField(QLatin1String(row.key))};
}

GotoLists fillFrom(engine::Database& database, const std::optional<GotoQuery>& query,
                   const QString& inputHint) {
    if (!query)
        return {};
    engine::Recordset rows = database.openRecordset(query->text, engine::RecordsetType::Snapshot);
    return fillGotoList(query->resultField, query->kind, rows, inputHint);
}

}  // namespace

QString gotoFieldForColumn(const QString& dataField) {
    const Column* column = findColumn(ColumnSet::Source, dataField);
    return column ? column->keyField() : dataField;
}

std::optional<GotoQuery> sourceGotoQuery(const QString& gotoField, const QString& filterClause) {
    const GotoFieldRow* row = findRow(kSourceFields, gotoField);
    if (!row)
        return std::nullopt;
    return queryOf(*row, QStringLiteral("FROM     TempSource ") + filterClause);
}

std::optional<GotoQuery> compilationGotoQuery(const QString& gotoField) {
    const GotoFieldRow* row = findRow(kCompilationFields, gotoField);
    if (!row)
        return std::nullopt;
    return queryOf(*row, QStringLiteral("FROM     Compilation "));
}

GotoLists comparisonsFor(ValueKind kind) {
    GotoLists lists;
    lists.comparisonPreset = QStringLiteral("=");
    switch (kind) {
        case ValueKind::YesNo:
            lists.comparisons = {QStringLiteral("=")};
            break;
        case ValueKind::Text:
            lists.comparisons = {QStringLiteral("Starts"),  QStringLiteral("Contains"),
                                 QStringLiteral("Like"),    QStringLiteral("Not Like"),
                                 QStringLiteral("Is Null"), QStringLiteral("Is Not Null")};
            lists.comparisonPreset = QStringLiteral("Starts");
            break;
        default:
            lists.comparisons = {QStringLiteral("="),       QStringLiteral(">="),
                                 QStringLiteral(">"),       QStringLiteral("<="),
                                 QStringLiteral("<"),       QStringLiteral("<>"),
                                 QStringLiteral("Is Null"), QStringLiteral("Is Not Null")};
    }
    return lists;
}

GotoLists fillGotoList(const QString& resultField, ValueKind kind, engine::Recordset& rows,
                       const QString& inputHint) {
    GotoLists lists = comparisonsFor(kind);
    if (kind == ValueKind::Date || kind == ValueKind::Time)
        lists.tooltip = inputHint;
    if (rows.recordCount() > 0)
        rows.moveFirst();
    for (; !rows.eof(); rows.moveNext()) {
        if (const auto text = valueText(kind, rows.value(resultField))) {
            lists.entries << *text;
            ++lists.count;
        }
    }
    return lists;
}

GotoLists fillSourceGotoList(engine::Database& database, const QString& gotoField,
                             const QString& filterClause, const QString& inputHint) {
    return fillFrom(database, sourceGotoQuery(gotoField, filterClause), inputHint);
}

GotoLists fillCompilationGotoList(engine::Database& database, const QString& gotoField,
                                  const QString& inputHint) {
    return fillFrom(database, compilationGotoQuery(gotoField), inputHint);
}

}  // namespace query
