#include "query/sort_clause.h"

#include <QStringList>

namespace query {

QString sortDialogCaption(SortCaller caller) {
    return caller == SortCaller::Source ? QStringLiteral("Sort Source")
                                        : QStringLiteral("Sort Tracks on Compilation");
}

const QVector<SortKey>& sortKeys(SortCaller caller) {
    static const QVector<SortKey> source = {
        {QStringLiteral("Track Performer"), QStringLiteral("ArtistSort")},
        {QStringLiteral("Track Title"), QStringLiteral("TitleTrack")},
        {QStringLiteral("Recorded"), QStringLiteral("MyRecorded")},
        {QStringLiteral("Time"), QStringLiteral("Length")},
        {QStringLiteral("Rating"), QStringLiteral("RatingTrack")},
        {QStringLiteral("Live"), QStringLiteral("Live")},
        {QStringLiteral("Version"), QStringLiteral("Version")},
        {QStringLiteral("Album Title"), QStringLiteral("TitleAlbum")},
        {QStringLiteral("Album Performer"), QStringLiteral("AlbumArtistSort")},
        {QStringLiteral("Item"), QStringLiteral("Item")},
        {QStringLiteral("Index"), QStringLiteral("Index")},
    };
    static const QVector<SortKey> compilation = {
        {QStringLiteral("Track Performer"), QStringLiteral("ArtistSort")},
        {QStringLiteral("Track Title"), QStringLiteral("Track_Title")},
        {QStringLiteral("Time"), QStringLiteral("Length")},
        {QStringLiteral("Recorded"), QStringLiteral("RecordedStart")},
        {QStringLiteral("Album Title"), QStringLiteral("Album_Title")},
        {QStringLiteral("Live"), QStringLiteral("Live")},
        {QStringLiteral("Version"), QStringLiteral("Version")},
        {QStringLiteral("Album Performer"), QStringLiteral("AlbumArtistSort")},
        {QStringLiteral("Item"), QStringLiteral("Item")},
        {QStringLiteral("Index"), QStringLiteral("Index")},
    };
    return caller == SortCaller::Source ? source : compilation;
}

const QVector<SortDirection>& sortDirections() {
    static const QVector<SortDirection> directions = {
        {QStringLiteral("Ascending"), QStringLiteral(" ASC")},
        {QStringLiteral("Descending"), QStringLiteral(" DESC")},
    };
    return directions;
}

QString defaultSortOrder(SortCaller caller) {
    return caller == SortCaller::Source
               ? QStringLiteral("ArtistSort, AlbumArtistSort, TitleAlbum, Item, Index ")
               : QStringLiteral("ArtistSort, AlbumArtistSort, Album_Title, Item, Index ");
}

QString composeSortClause(const SortLevels& levels, SortCaller caller) {
    QStringList terms;
    for (const SortLevel& level : levels) {
        if (!level.field.isEmpty()) {
            terms << level.field + level.direction;
        }
    }
    return terms.isEmpty() ? defaultSortOrder(caller) : terms.join(QStringLiteral(", "));
}

QString sourceSortClause(const QString& orderText) {
    return QStringLiteral("ORDER BY ") + orderText;
}

std::optional<SortLevel> sortLevelFromCaptions(SortCaller caller, const QString& keyCaption,
                                               const QString& directionCaption) {
    const auto matches = [](const QString& caption, const QString& given) {
        return caption.compare(given, Qt::CaseInsensitive) == 0;
    };
    std::optional<QString> field;
    for (const SortKey& key : sortKeys(caller)) {
        if (matches(key.caption, keyCaption)) {
            field = key.field;
        }
    }
    for (const SortDirection& direction : sortDirections()) {
        if (field && matches(direction.caption, directionCaption)) {
            return SortLevel{*field, direction.value};
        }
    }
    return std::nullopt;
}

}  // namespace query
