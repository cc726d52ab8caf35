#include "query/sort_clause.h"

#include <QStringList>

#include "query/columns.h"

namespace query {

QString sortDialogCaption(SortCaller caller) {
    return caller == SortCaller::Source ? QStringLiteral("Sort Source")
                                        : QStringLiteral("Sort Tracks on Compilation");
}

namespace {

QVector<SortKey> sortableColumns(ColumnSet set) {
    QVector<SortKey> keys;
    for (const Column& column : columns(set)) {
        if (column.sortable)
            keys.append({column.caption, column.keyField()});
    }
    return keys;
}

QString orderTerm(const SortLevel& level) {
    if (!level.direction)
        return level.field;
    return level.field + (*level.direction == SortDirection::Ascending ? QStringLiteral(" ASC")
                                                                       : QStringLiteral(" DESC"));
}

}  // namespace

const QVector<SortKey>& sortKeys(SortCaller caller) {
    static const QVector<SortKey> source = sortableColumns(ColumnSet::Source);
    static const QVector<SortKey> compilation = sortableColumns(ColumnSet::CompilationTracks);
    return caller == SortCaller::Source ? source : compilation;
}

const QVector<SortDirectionChoice>& sortDirections() {
    static const QVector<SortDirectionChoice> directions = {
        {QStringLiteral("Ascending"), SortDirection::Ascending},
        {QStringLiteral("Descending"), SortDirection::Descending},
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
            terms << orderTerm(level);
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
    for (const SortDirectionChoice& direction : sortDirections()) {
        if (field && matches(direction.caption, directionCaption)) {
            return SortLevel{*field, direction.value};
        }
    }
    return std::nullopt;
}

}  // namespace query
