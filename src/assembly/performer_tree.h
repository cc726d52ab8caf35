#pragma once

#include <QString>
#include <QStringList>

namespace engine {
class Database;
}  // namespace engine

// The performer navigator's tree: the distinct performers (sort forms) of the track picker's
// source at the root, the distinct title/album pairs of one performer below it, and the
// criterion that finds a clicked node's row in the source. The tree reads what the source grid
// shows: a filtered or sorted source is read through the stored query queryNavigate, made afresh
// from the grid's record source at every request.
namespace assembly {

inline const QString kNavigateQuery = QStringLiteral("queryNavigate");
// The plain record source of an unfiltered, unsorted source grid.
inline const QString kPlainSource = QStringLiteral("TempSource");

// Shown when a performer has no sort form; the navigator then closes.
extern const QString kIncompleteData;

// Drops queryNavigate; a missing query or a failing drop is no failure.
void deleteNavigateQuery(engine::Database& database);

// The statement of the root level. A record source other than the plain "TempSource" is first
// stored as queryNavigate (replacing an older one), and the statement reads that.
QString getRootNodeData(engine::Database& database, const QString& sourceRecordSource);
// The statement of one performer's children, from the same table or query as the root level.
QString childNodeData(engine::Database& database, const QString& sourceRecordSource,
                      const QString& performer);

// "Title   [Album]": the text of a child node.
QString childNodeText(const QString& titleTrack, const QString& titleAlbum);

// The criterion that finds a node's first row in the source: level 1 a performer (parentText
// unused), level 2 a child node under the performer parentText.
QString nodeCriteria(int level, const QString& nodeText, const QString& parentText);

// The performers of the root level, in order. incomplete: a row without sort form was met; the
// texts before it are kept.
struct NodeLevel {
    QStringList texts;
    bool incomplete = false;
};

// Run the level's statement and read its nodes. Engine errors propagate as engine::JetError.
NodeLevel readRootNodes(engine::Database& database, const QString& sourceRecordSource);
// A Null title or album shows as the empty text.
QStringList readChildNodes(engine::Database& database, const QString& sourceRecordSource,
                           const QString& performer);

}  // namespace assembly
