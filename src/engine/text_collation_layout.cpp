#include "engine/text_collation_layout.h"

#include <sqlite3.h>

#include <vector>

#include "engine/connection.h"
#include "engine/field_type.h"
#include "engine/jet_error.h"
#include "engine/sqlite_statement.h"
#include "engine/transaction.h"

namespace engine {

namespace {

bool isNameChar(QChar c) {
    return c.isLetterOrNumber() || c == u'_' || c == u'$' || c.unicode() >= 0x80;
}

// The end of the piece of SQLite text that starts at `at`: a quoted string or name, a comment,
// a word, or a single other character.
qsizetype pieceEnd(const QString& sql, qsizetype at) {
    const QChar c = sql[at];
    const auto through = [&](QChar close) {
        qsizetype i = at + 1;
        for (; i < sql.size(); ++i) {
            if (sql[i] == close) {
                if (close != u']' && i + 1 < sql.size() && sql[i + 1] == close) {
                    ++i;  // a doubled quote stands for itself
                    continue;
                }
                return i + 1;
            }
        }
        return i;
    };
    if (c == u'\'' || c == u'"' || c == u'`')
        return through(c);
    if (c == u'[')
        return through(u']');
    if (sql.mid(at, 2) == QLatin1String("--")) {
        const qsizetype end = sql.indexOf(u'\n', at);
        return end < 0 ? sql.size() : end + 1;
    }
    if (sql.mid(at, 2) == QLatin1String("/*")) {
        const qsizetype end = sql.indexOf(QLatin1String("*/"), at + 2);
        return end < 0 ? sql.size() : end + 2;
    }
    qsizetype i = at;
    while (i < sql.size() && isNameChar(sql[i]))
        ++i;
    return i > at ? i : at + 1;
}

bool isBlankOrComment(QStringView piece) {
    return piece.trimmed().isEmpty() || piece.startsWith(u"--") || piece.startsWith(u"/*");
}

// The name a piece stands for: a word as it is, a quoted one without its quotes.
QStringView bareName(QStringView piece) {
    if (piece.size() >= 2 && QStringView(u"'\"`[").contains(piece.front()))
        return piece.mid(1, piece.size() - 2);
    return piece;
}

struct SchemaText {
    qint64 rowid;
    QString sql;
};

std::vector<SchemaText> schemaTexts(sqlite3* db) {
    Statement query(db, QStringLiteral("SELECT rowid, sql FROM main.sqlite_master "
                                       "WHERE sql IS NOT NULL ORDER BY rowid"));
    std::vector<SchemaText> texts;
    while (query.step())
        texts.push_back({query.int64(0), query.text(1)});
    return texts;
}

JetError conversionFailure(const QString& path, const JetError& error) {
    return JetError(error.number(),
                    QStringLiteral("The database '%1' cannot be converted to the text order of "
                                   "this version: %2")
                        .arg(path, error.description()));
}

// Step one: the schema texts name the new collation. SQLite reads its schema only from these
// texts, so the indexes it built under the old name are now out of order until rebuilt.
void renameInSchema(const QString& path) {
    std::shared_ptr<Connection> connection = Connection::open(path, false);
    sqlite3* db = connection->db();
    ScopedTransaction transaction(db);
    Statement version(db, QStringLiteral("PRAGMA main.schema_version"));
    version.step();
    const qint64 schemaVersion = version.int64(0);
    execSqlite(db, QStringLiteral("PRAGMA writable_schema = ON"));
    for (const SchemaText& text : schemaTexts(db)) {
        const QString renamed = renameNocaseCollation(text.sql);
        if (renamed != text.sql) {
            Statement update(db, QStringLiteral("UPDATE main.sqlite_master SET sql = ? "
                                                "WHERE rowid = ?"));
            update.bind(1, renamed);
            update.bind(2, text.rowid);
            update.exec();
        }
    }
    // Tells every connection that the schema changed, so that none keeps the old one.
    execSqlite(db, QStringLiteral("PRAGMA main.schema_version = %1").arg(schemaVersion + 1));
    execSqlite(db, QStringLiteral("PRAGMA writable_schema = OFF"));
    transaction.commit();
}

// Step two, on a connection that read the new schema: the indexes in the engine's order.
void rebuildIndexes(const QString& path) {
    std::shared_ptr<Connection> connection = Connection::open(path, false);
    const QString result = reindexAndCheck(connection->db());
    if (result != QLatin1String("ok")) {
        throw JetError(jet::kNotADatabase,
                       QStringLiteral("its indexes do not agree with its rows (%1).").arg(result));
    }
}

}  // namespace

QString renameNocaseCollation(const QString& schemaSql) {
    QString out;
    out.reserve(schemaSql.size());
    bool afterCollate = false;
    for (qsizetype at = 0; at < schemaSql.size();) {
        const qsizetype end = pieceEnd(schemaSql, at);
        const QStringView piece = QStringView(schemaSql).mid(at, end - at);
        at = end;
        if (isBlankOrComment(piece)) {
            out += piece;
            continue;
        }
        if (afterCollate && bareName(piece).compare(u"NOCASE", Qt::CaseInsensitive) == 0) {
            out += QLatin1String(kTextCollation);
        } else {
            out += piece;
        }
        afterCollate = piece.compare(u"COLLATE", Qt::CaseInsensitive) == 0;
    }
    return out;
}

bool declaresNocase(sqlite3* db) {
    for (const SchemaText& text : schemaTexts(db)) {
        if (renameNocaseCollation(text.sql) != text.sql)
            return true;
    }
    return false;
}

bool hasNocaseLayout(const QString& path) {
    std::shared_ptr<Connection> connection = Connection::open(path, true);
    return declaresNocase(connection->db());
}

void convertNocaseLayout(const QString& path) {
    try {
        renameInSchema(path);
        rebuildIndexes(path);
    } catch (const JetError& error) {
        throw conversionFailure(path, error);
    }
}

}  // namespace engine
