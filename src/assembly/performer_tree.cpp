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

const QString kAvoid = QStringLiteral("AVOID");
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
           QStringLiteral(" AND ") + QStringLiteral("titletrack='") + title + QStringLiteral("'") +
           QStringLiteral(" AND ") + QStringLiteral("titlealbum='") + album + QStringLiteral("'");
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

NodeLevel readChildNodes(engine::Database& database, const QString& sourceRecordSource,
                         const QString& performer) {
    engine::Recordset rows = database.openRecordset(
        childNodeData(database, sourceRecordSource, performer), engine::RecordsetType::Snapshot);
    NodeLevel level;
    for (; !rows.eof(); rows.moveNext()) {
        QString title;
        QString album;
        if (!nodeValue(rows.value(1), title) || !nodeValue(rows.value(2), album)) {
            level.incomplete = true;
            break;
        }
        level.texts << childNodeText(title, album);
    }
    return level;
}

}  // namespace assembly
