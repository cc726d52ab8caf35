#include "query/columns.h"

#include <QDate>
#include <QDateTime>
#include <array>

#include "engine/jet_format.h"
#include "query/date_text.h"
#include "query/time_text.h"

namespace query {

namespace {

using K = ValueKind;

// Sortable and filterable: the track picker's source offers every column to both dialogs.
Column sourceColumn(const char* field, const char* caption, ValueKind kind,
                    const char* orderField = "", const char* filterCaption = "") {
    return {QString::fromLatin1(field),      QString::fromLatin1(caption),      kind, true, true,
            QString::fromLatin1(orderField), QString::fromLatin1(filterCaption)};
}

// Sortable, not filterable: the rearranging window orders a compilation's tracks.
Column trackColumn(const char* field, const char* caption, ValueKind kind,
                   const char* orderField = "") {
    return {QString::fromLatin1(field),
            QString::fromLatin1(caption),
            kind,
            true,
            false,
            QString::fromLatin1(orderField),
            {}};
}

// Shown and searched only.
Column listColumn(const char* field, const char* caption, ValueKind kind = K::Text) {
    return {QString::fromLatin1(field), QString::fromLatin1(caption), kind, false, false, {}, {}};
}

const std::array<Column, 11> kSource{
    sourceColumn("PerformerTrack", "Track Performer", K::Text, "ArtistSort"),
    sourceColumn("TitleTrack", "Track Title", K::Text),
    sourceColumn("MyRecorded", "Recorded", K::Number),
    sourceColumn("Length", "Time", K::Time),
    sourceColumn("RatingTrack", "Rating", K::Text),
    sourceColumn("Live", "Live", K::YesNo),
    sourceColumn("Version", "Version", K::Text),
    sourceColumn("TitleAlbum", "Album Title", K::Text),
    sourceColumn("PerformerAlbum", "Album Performer", K::Text, "AlbumArtistSort"),
    sourceColumn("Item", "Item", K::Number, "", "Item #"),
    sourceColumn("Index", "Index", K::Number, "", "Index #"),
};

// The number is the running order, not an order the sort dialog offers.
const std::array<Column, 11> kCompilationTracks{
    listColumn("TrackNo", "Track", K::Number),
    trackColumn("Track_Artist_Name", "Track Performer", K::Text, "ArtistSort"),
    trackColumn("Track_Title", "Track Title", K::Text),
    trackColumn("Length", "Time", K::Time),
    trackColumn("RecordedStart", "Recorded", K::Text),
    trackColumn("Album_Title", "Album Title", K::Text),
    trackColumn("Live", "Live", K::YesNo),
    trackColumn("Version", "Version", K::Text),
    trackColumn("Album_Artist_Name", "Album Performer", K::Text, "AlbumArtistSort"),
    trackColumn("Item", "Item", K::Number),
    trackColumn("Index", "Index", K::Number),
};

const std::array<Column, 9> kCompilations{
    listColumn("c_name", "Compilation Title"),
    listColumn("c_box", "Storage"),
    listColumn("c_sumtrack", "Track #", K::Number),
    listColumn("c_sumtime", "Total Time", K::Time),
    listColumn("c_format", "Format"),
    listColumn("Manufacturer", "Manufacturer"),
    listColumn("recdate", "Rec. Date", K::Date),
    listColumn("c_length", "Length", K::Number),
    listColumn("c_notes", "Notes"),
};

const std::array<Column, 6> kTrackLookup{
    listColumn("Name", "Compilation Title"),
    listColumn("TrackNo", "Track #", K::Number),
    listColumn("Box", "Storage"),
    listColumn("Format", "Format"),
    listColumn("Manufacturer", "Manufacturer"),
    listColumn("RecDate", "Rec. Date", K::Date),
};

constexpr std::array kSets{ColumnSet::Source, ColumnSet::CompilationTracks, ColumnSet::Compilations,
                           ColumnSet::TrackLookup};

bool sameField(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

std::optional<QDate> dateOf(const QVariant& value) {
    if (value.typeId() == QMetaType::QDateTime)
        return value.toDateTime().date();
    const QDate date = value.toDate();
    return date.isValid() ? std::optional<QDate>(date) : std::nullopt;
}

}  // namespace

std::span<const Column> columns(ColumnSet set) {
    switch (set) {
        case ColumnSet::Source:
            return kSource;
        case ColumnSet::CompilationTracks:
            return kCompilationTracks;
        case ColumnSet::Compilations:
            return kCompilations;
        case ColumnSet::TrackLookup:
            return kTrackLookup;
    }
    return {};
}

const Column* findColumn(ColumnSet set, const QString& field) {
    for (const Column& column : columns(set)) {
        if (sameField(column.field, field))
            return &column;
    }
    return nullptr;
}

ValueKind kindOfField(const QString& field) {
    for (const ColumnSet set : kSets) {
        for (const Column& column : columns(set)) {
            if (sameField(column.field, field) || sameField(column.keyField(), field))
                return column.kind;
        }
    }
    return ValueKind::Text;
}

std::optional<QString> valueText(ValueKind kind, const QVariant& value) {
    if (value.isNull())
        return std::nullopt;
    switch (kind) {
        case ValueKind::Time:
            return formatTime(value.toDouble());
        case ValueKind::YesNo:
            return value.toBool() ? QStringLiteral("Yes") : QStringLiteral("No");
        case ValueKind::Currency: {
            const QString text = engine::formatJetValue(value, QStringLiteral("Currency"));
            return text.isEmpty() ? std::nullopt : std::optional<QString>(text);
        }
        case ValueKind::Date: {
            const std::optional<QDate> date = dateOf(value);
            return date ? std::optional<QString>(shortDateText(*date)) : std::nullopt;
        }
        case ValueKind::Text:
        case ValueKind::Number:
            break;
    }
    // A date in a column of another kind is shown in short form as well.
    const bool holdsDate =
        value.typeId() == QMetaType::QDate || value.typeId() == QMetaType::QDateTime;
    if (const std::optional<QDate> date = holdsDate ? dateOf(value) : std::nullopt)
        return shortDateText(*date);
    return value.toString();
}

}  // namespace query
