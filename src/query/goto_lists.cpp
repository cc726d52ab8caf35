#include "query/goto_lists.h"

#include <QDate>
#include <QVariant>

#include "engine/database.h"
#include "engine/jet_format.h"
#include "engine/recordset.h"
#include "query/date_text.h"
#include "query/time_text.h"

namespace query {

namespace {

// One goto field: the pieces of its statement, the field holding the values and the type.
struct GotoFieldRow {
    const char* key;  // the goto field lower-cased
    const char* selectList;
    const char* groupBy;
    const char* resultField;
    const char* typeLetter;
};

// The source list statements group over TempSource; the filter goes between FROM and GROUP BY,
// so without one two blanks stand before GROUP BY.
constexpr GotoFieldRow kSourceFields[] = {
    {"artistsort", "SELECT   TempSource.ArtistSort ", " GROUP BY TempSource.ArtistSort;",
     "artistsort", "c"},
    {"titletrack", "SELECT   TempSource.TitleTrack ", " GROUP BY TempSource.TitleTrack;",
     "titletrack", "c"},
    {"length", "SELECT   TempSource.Length ", " GROUP BY TempSource.Length;", "Length", "n"},
    {"live", "SELECT   format(TempSource.Live,'Yes/No') As Live ", " GROUP BY TempSource.Live;",
     "live", "b"},
    {"myrecorded", "SELECT   TempSource.MyRecorded ", " GROUP BY TempSource.MyRecorded;",
     "MyRecorded", "n"},
    {"item", "SELECT   TempSource.Item ", " GROUP BY TempSource.Item;", "Item", "n"},
    {"index", "SELECT   TempSource.Index ", " GROUP BY TempSource.Index;", "Index", "n"},
    {"titlealbum", "SELECT   TempSource.TitleAlbum ", " GROUP BY TempSource.TitleAlbum;",
     "TitleAlbum", "c"},
    {"albumartistsort", "SELECT   TempSource.AlbumArtistSort ",
     " GROUP BY TempSource.AlbumArtistSort;", "albumartistsort", "c"},
    {"ratingtrack", "SELECT   TempSource.RatingTrack ", " GROUP BY TempSource.RatingTrack;",
     "RatingTrack", "c"},
    {"version", "SELECT   TempSource.Version ", " GROUP BY TempSource.Version;", "Version", "c"},
};

// The memo Notes can only be grouped through Mid().
constexpr GotoFieldRow kCompilationFields[] = {
    {"c_name", "SELECT   Compilation.Name ", "GROUP BY Compilation.Name;", "Name", "c"},
    {"manufacturer", "SELECT   Compilation.Manufacturer ", "GROUP BY Compilation.Manufacturer;",
     "Manufacturer", "c"},
    {"c_format", "SELECT   Compilation.Format ", "GROUP BY Compilation.Format;", "Format", "c"},
    {"c_box", "SELECT   Compilation.Box ", "GROUP BY Compilation.Box;", "Box", "c"},
    {"c_notes", "SELECT   Mid(Compilation.Notes,1) AS Notes ", "GROUP BY Mid(Compilation.Notes,1);",
     "Notes", "c"},
    {"c_length", "SELECT   Compilation.C_Length ", "GROUP BY Compilation.C_Length;", "C_length",
     "n"},
    {"c_sumtrack", "SELECT   Compilation.SumTrack ", "GROUP BY Compilation.SumTrack;", "SumTrack",
     "n"},
    {"c_sumtime", "SELECT   Compilation.SumTime AS C_SumTime  ", "GROUP BY Compilation.SumTime;",
     "C_SumTime", "n"},
    {"recdate", "SELECT   Compilation.RecDate ", "GROUP BY Compilation.RecDate;", "RecDate", "d"},
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
            QLatin1String(row.resultField), QLatin1String(row.typeLetter)};
}

enum class EntryForm { Date, Currency, Time, Plain };

EntryForm entryForm(const QString& resultField, const QString& typeLetter) {
    const QString letter = typeLetter.toLower();
    if (letter == QLatin1String("d"))
        return EntryForm::Date;
    if (letter == QLatin1String("r"))
        return EntryForm::Currency;
    const QString field = resultField.toLower();
    if (field == QLatin1String("c_sumtime") || field == QLatin1String("length"))
        return EntryForm::Time;
    return EntryForm::Plain;
}

// The text a value is listed as, or nothing when the value gives no entry.
std::optional<QString> entryText(EntryForm form, const QVariant& value) {
    if (value.isNull())
        return std::nullopt;
    switch (form) {
        case EntryForm::Date: {
            const QDate date = value.toDate();
            return date.isValid() ? std::optional<QString>(shortDateText(date)) : std::nullopt;
        }
        case EntryForm::Currency: {
            const QString text = engine::formatJetValue(value, QStringLiteral("Currency"));
            return text.isEmpty() ? std::nullopt : std::optional<QString>(text);
        }
        case EntryForm::Time:
            return formatTime(value.toDouble());
        case EntryForm::Plain:
            return value.toString();
    }
    return std::nullopt;
}

GotoLists fillFrom(engine::Database& database, const std::optional<GotoQuery>& query,
                   const QString& inputHint) {
    if (!query)
        return {};
    engine::Recordset rows = database.openRecordset(query->text, engine::RecordsetType::Snapshot);
    return fillGotoList(query->resultField, query->typeLetter, rows, inputHint);
}

}  // namespace

QString gotoFieldForColumn(const QString& dataField) {
    const QString lower = dataField.toLower();
    if (lower == QLatin1String("performertrack"))
        return QStringLiteral("ArtistSort");
    if (lower == QLatin1String("performeralbum"))
        return QStringLiteral("AlbumArtistSort");
    return dataField;
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

GotoLists comparisonsFor(const QString& typeLetter) {
    const QString letter = typeLetter.toLower();
    GotoLists lists;
    if (letter == QLatin1String("b")) {
        lists.comparisons = {QStringLiteral("=")};
        lists.comparisonPreset = QStringLiteral("=");
    } else if (letter == QLatin1String("d") || letter == QLatin1String("n") ||
               letter == QLatin1String("r")) {
        lists.comparisons = {QStringLiteral("="),       QStringLiteral(">="),
                             QStringLiteral(">"),       QStringLiteral("<="),
                             QStringLiteral("<"),       QStringLiteral("<>"),
                             QStringLiteral("Is Null"), QStringLiteral("Is Not Null")};
        lists.comparisonPreset = QStringLiteral("=");
    } else if (letter == QLatin1String("c")) {
        lists.comparisons = {QStringLiteral("Starts"),  QStringLiteral("Contains"),
                             QStringLiteral("Like"),    QStringLiteral("Not Like"),
                             QStringLiteral("Is Null"), QStringLiteral("Is Not Null")};
        lists.comparisonPreset = QStringLiteral("Starts");
    }
    return lists;
}

GotoLists fillGotoList(const QString& resultField, const QString& typeLetter,
                       engine::Recordset& rows, const QString& inputHint) {
    GotoLists lists = comparisonsFor(typeLetter);
    const EntryForm form = entryForm(resultField, typeLetter);
    if (form == EntryForm::Date || form == EntryForm::Time)
        lists.tooltip = inputHint;
    if (rows.recordCount() > 0)
        rows.moveFirst();
    for (; !rows.eof(); rows.moveNext()) {
        if (const auto text = entryText(form, rows.value(resultField))) {
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
