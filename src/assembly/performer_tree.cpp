#include "assembly/performer_tree.h"

#include "engine/database.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "query/field_values.h"

namespace assembly {

const QString kIncompleteData = QStringLiteral(
    "Uncomplete data. Make sure that the 'Artist sort by' field \r\n"
    "in your Albumory database is NOT empty.");

namespace {

constexpr query::EscapeFor kAvoid = query::EscapeFor::Literal;
const QString kChildSeparator = QStringLiteral("   [");

// The table or query a level reads: the plain source itself, or queryNavigate made afresh from
// the grid's record source. An older queryNavigate never outlives a request.
QString navigatedSource(engine::Database& database, const QString& sourceRecordSource) {
    deleteNavigateQuery(database);
    if (sourceRecordSource == kPlainSource) {
        return kPlainSource;
    }
    database.createQueryDef(kNavigateQuery, sourceRecordSource);
    return kNavigateQuery;
}

// The text of a node from a row's value; false for a Null, which cannot be a node's text.
bool nodeValue(const QVariant& value, QString& text) {
    if (value.isNull()) {
        return false;
    }
    text = value.toString();
    return true;
}

// A node's empty title or album stands for a Null one as well.
QString equalsNodeText(const QString& field, const QString& escaped) {
    const QString equals = field + QStringLiteral("='") + escaped + QStringLiteral("'");
    if (!escaped.isEmpty()) {
        return equals;
    }
    return QStringLiteral("(") + equals + QStringLiteral(" OR ") + field +
           QStringLiteral(" Is Null)");
}

}  // namespace

void deleteNavigateQuery(engine::Database& database) {
    try {
        database.deleteQueryDef(kNavigateQuery);
    } catch (const engine::JetError&) {
        // Usually there is none to drop; a drop that fails is met again by the create.
    }
}

QString getRootNodeData(engine::Database& database, const QString& sourceRecordSource) {
    return QStringLiteral("SELECT DISTINCT ArtistSort FROM ") +
           navigatedSource(database, sourceRecordSource) + QStringLiteral(" ") +
           QStringLiteral(" WHERE ArtistSort <> ''") + QStringLiteral(" ORDER BY ArtistSort ");
}

QString childNodeData(engine::Database& database, const QString& sourceRecordSource,
                      const QString& performer) {
    return QStringLiteral("SELECT DISTINCT ArtistSort, TitleTrack, TitleAlbum FROM ") +
           navigatedSource(database, sourceRecordSource) + QStringLiteral(" ") +
           QStringLiteral(" WHERE ArtistSort= '") + query::escapeSql(kAvoid, performer) +
           QStringLiteral("'") + QStringLiteral(" ORDER BY TitleTrack, TitleAlbum ");
}

QString childNodeText(const QString& titleTrack, const QString& titleAlbum) {
    return titleTrack + kChildSeparator + titleAlbum + QStringLiteral("]");
}

QString nodeCriteria(int level, const QString& nodeText, const QString& parentText) {
    if (level == 1) {
        return QStringLiteral("artistsort='") + query::escapeSql(kAvoid, nodeText) +
               QStringLiteral("'");
    }
    const QString performer = query::escapeSql(kAvoid, parentText);
    const QString node = query::escapeSql(kAvoid, nodeText);
    const qsizetype separator = node.indexOf(kChildSeparator);
    const QString title = separator < 0 ? node : node.left(separator);
    const qsizetype open = node.indexOf(QLatin1Char('['));
    const qsizetype close = node.indexOf(QLatin1Char(']'));
    const QString album =
        open >= 0 && close > open ? node.mid(open + 1, close - open - 1) : QString();
    return QStringLiteral("artistsort='") + performer + QStringLiteral("'") +
           QStringLiteral(" AND ") + equalsNodeText(QStringLiteral("titletrack"), title) +
           QStringLiteral(" AND ") + equalsNodeText(QStringLiteral("titlealbum"), album);
}

NodeLevel readRootNodes(engine::Database& database, const QString& sourceRecordSource) {
    engine::Recordset rows = database.openRecordset(getRootNodeData(database, sourceRecordSource),
                                                    engine::RecordsetType::Snapshot);
    NodeLevel level;
    level.texts.reserve(rows.recordCount());
    for (; !rows.eof(); rows.moveNext()) {
        QString performer;
        if (!nodeValue(rows.value(0), performer)) {
            level.incomplete = true;
            break;
        }
        level.texts << performer;
    }
    return level;
}

QStringList readChildNodes(engine::Database& database, const QString& sourceRecordSource,
                           const QString& performer) {
    engine::Recordset rows = database.openRecordset(
        childNodeData(database, sourceRecordSource, performer), engine::RecordsetType::Snapshot);
    QStringList texts;
    for (; !rows.eof(); rows.moveNext()) {
        // A track without title or album is still a track of the performer: a Null shows as
        // the empty text.
        texts << childNodeText(rows.value(1).toString(), rows.value(2).toString());
    }
    return texts;
}

}  // namespace assembly
