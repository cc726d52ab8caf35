#include "engine/snapshot.h"

#include <sqlite3.h>

#include <QRegularExpression>

#include "engine/connection.h"
#include "engine/connection_tables.h"
#include "engine/jet_dialect.h"
#include "engine/jet_error.h"
#include "engine/sqlite_statement.h"
#include "engine/transaction.h"

namespace engine {

namespace {

constexpr int kCacheLimit = 1024;

QString ridColumnName(int index) {
    return QStringLiteral("__rid%1").arg(index);
}

// Statements that fold rows together cannot be traced back to single base rows.
bool foldsRows(const QString& select) {
    static const QRegularExpression folding(
        QStringLiteral("\\b(GROUP\\s+BY|DISTINCT|UNION|INTERSECT|EXCEPT|HAVING)\\b"),
        QRegularExpression::CaseInsensitiveOption);
    return folding.match(select).hasMatch();
}

// The table a "SELECT * FROM name" reads, as the engine writes it for a record set on a table.
QString wholeTableName(const QString& select) {
    static const QRegularExpression whole(
        QStringLiteral("^SELECT \\* FROM \"((?:[^\"]|\"\")+)\"$"));
    const auto match = whole.match(select);
    return match.hasMatch()
               ? match.captured(1).replace(QStringLiteral("\"\""), QStringLiteral("\""))
               : QString();
}

}  // namespace

Snapshot::Snapshot(std::shared_ptr<Connection> connection, const QString& select, bool updatable)
    : connection_(std::move(connection)), select_(select) {
    table_ = QStringLiteral("mx_rs_%1").arg(connection_->nextSnapshotNumber());
    readFields(select);
    const QString whole = wholeTableName(select);
    if (updatable && !whole.isEmpty() && connection_->hasLocalTable(whole)) {
        // The rows stay in their table and are read by row id when asked for.
        direct_ = true;
        ridTables_ = baseTables();
        updatable_ = !ridTables_.isEmpty();
        for (FieldInfo& field : fields_) {
            field.ridColumn = static_cast<int>(ridTables_.indexOf(field.originTable));
        }
        return;
    }
    QString filled = select;
    if (updatable && !foldsRows(select)) {
        const QStringList tables = baseTables();
        if (!tables.isEmpty()) {
            const QString injected = injectRowIds(select, tables);
            try {
                Statement probe(connection_->db(), injected);
                filled = injected;
                ridTables_ = tables;
                updatable_ = true;
            } catch (const JetError&) {
                // An alias or a self-join hides the row ids: the rows stay read-only.
            }
        }
    }
    for (FieldInfo& field : fields_) {
        field.ridColumn = static_cast<int>(ridTables_.indexOf(field.originTable));
    }
    createTable(filled);
}

Snapshot::~Snapshot() {
    if (!direct_ && connection_->isOpen()) {
        try {
            execSqlite(connection_->db(),
                       QStringLiteral("DROP TABLE IF EXISTS temp.%1").arg(table_));
        } catch (const JetError&) {
            // The connection is closing; its temporary tables go with it.
        }
    }
}

void Snapshot::readFields(const QString& select) {
    Statement statement(connection_->db(), select);
    const int count = statement.columnCount();
    for (int i = 0; i < count; ++i) {
        FieldInfo field;
        field.name = statement.columnName(i);
        const QString database = statement.columnDatabase(i);
        const QString table = statement.columnOriginTable(i);
        if (!table.isEmpty() && database == schemaOfTable(table)) {
            field.originTable = table;
            field.originColumn = statement.columnOriginName(i);
        }
        const QString declared = statement.columnDeclaredType(i);
        field.type = declared.isEmpty() ? FieldType::Text : fieldTypeFromDeclared(declared);
        QString column = field.name;
        for (int n = 2; byName_.contains(column.toLower()); ++n) {
            column = field.name + QStringLiteral("_%1").arg(n);
        }
        byName_.insert(column.toLower(), i);
        if (!field.originTable.isEmpty()) {
            byName_.insert((field.originTable + QLatin1Char('.') + field.originColumn).toLower(),
                           i);
        }
        columns_ << column;
        fields_ << field;
    }
}

QStringList Snapshot::baseTables() const {
    QStringList tables;
    for (const FieldInfo& field : fields_) {
        if (!field.originTable.isEmpty() && !tables.contains(field.originTable)) {
            tables << field.originTable;
        }
    }
    return tables;
}

QString Snapshot::injectRowIds(const QString& select, const QStringList& tables) const {
    static const QRegularExpression head(QStringLiteral("^\\s*SELECT\\s"),
                                         QRegularExpression::CaseInsensitiveOption);
    const auto match = head.match(select);
    if (!match.hasMatch()) {
        return select;
    }
    QString ids;
    for (int i = 0; i < tables.size(); ++i) {
        ids += QStringLiteral("%1.rowid AS %2, ").arg(quoteName(tables[i]), ridColumnName(i));
    }
    return match.captured(0) + ids + select.mid(match.capturedEnd());
}

void Snapshot::createTable(const QString& select) {
    QStringList definitions{QStringLiteral("__id INTEGER PRIMARY KEY")};
    QStringList inserted;
    for (int i = 0; i < ridTables_.size(); ++i) {
        definitions << ridColumnName(i);
        inserted << ridColumnName(i);
    }
    for (int i = 0; i < fields_.size(); ++i) {
        QString definition = quoteName(columns_[i]);
        if (!fields_[i].originTable.isEmpty() || fields_[i].type != FieldType::Text) {
            definition += QLatin1Char(' ') + declaredType(fields_[i].type);
        }
        if (isTextType(fields_[i].type)) {
            definition += textCollationClause();
        }
        definitions << definition;
        inserted << quoteName(columns_[i]);
    }
    sqlite3* db = connection_->db();
    execSqlite(db, QStringLiteral("CREATE TEMP TABLE %1 (%2)").arg(table_, definitions.join(", ")));
    execSqlite(
        db, QStringLiteral("INSERT INTO temp.%1 (%2) %3").arg(table_, inserted.join(", "), select));
}

int Snapshot::fieldIndex(const QString& name) const {
    return byName_.value(name.toLower(), -1);
}

QString Snapshot::rowsTable() const {
    return direct_ ? qualifiedTable(ridTables_.first()) : QStringLiteral("temp.") + table_;
}

QString Snapshot::idColumn() const {
    return direct_ ? QStringLiteral("rowid") : QStringLiteral("__id");
}

QString Snapshot::fromClause() const {
    // A snapshot of one table answers to that table's name too ("TempSource.Length").
    const QStringList tables = baseTables();
    QString from = rowsTable();
    if (tables.size() == 1) {
        from += QStringLiteral(" AS ") + quoteName(tables.first());
    }
    return from;
}

QVector<qint64> Snapshot::ids(const QString& jetOrderBy) const {
    QString sql = QStringLiteral("SELECT %1 FROM %2 ORDER BY ").arg(idColumn(), fromClause());
    if (jetOrderBy.trimmed().isEmpty()) {
        sql += idColumn();
    } else {
        const QString order =
            translateJetSql(QStringLiteral("SELECT 1 FROM x ORDER BY ") + jetOrderBy).sql;
        const int at = order.indexOf(QStringLiteral("ORDER BY"), 0, Qt::CaseInsensitive);
        sql += order.mid(at + 8) + QStringLiteral(", ") + idColumn();
    }
    Statement statement(connection_->db(), sql);
    QVector<qint64> result;
    while (statement.step()) {
        result << statement.int64(0);
    }
    return result;
}

QSet<qint64> Snapshot::matching(const QString& jetCriterion) const {
    const QString where = translateJetExpression(jetCriterion);
    Statement statement(
        connection_->db(),
        QStringLiteral("SELECT %1 FROM %2 WHERE (%3)").arg(idColumn(), fromClause(), where));
    QSet<qint64> result;
    while (statement.step()) {
        result.insert(statement.int64(0));
    }
    return result;
}

QVector<QVariant> Snapshot::rows(const QVector<qint64>& ids) const {
    QHash<qint64, int> positions;
    positions.reserve(ids.size());
    for (int i = 0; i < ids.size(); ++i) {
        positions.insert(ids[i], i);
    }
    QStringList names{idColumn()};
    for (const QString& column : columns_) {
        names << quoteName(column);
    }
    Statement statement(connection_->db(),
                        QStringLiteral("SELECT %1 FROM %2").arg(names.join(", "), rowsTable()));
    const int width = int(fields_.size());
    QVector<QVariant> values(ids.size() * width);
    while (statement.step()) {
        const auto position = positions.constFind(statement.int64(0));
        if (position == positions.constEnd()) {
            continue;
        }
        QVariant* row = values.data() + qsizetype(position.value()) * width;
        for (int i = 0; i < width; ++i) {
            row[i] = statement.value(i + 1, fields_[i].type);
        }
    }
    return values;
}

QVector<QVariant> Snapshot::row(qint64 id) const {
    const auto cached = cache_.constFind(id);
    if (cached != cache_.constEnd()) {
        return cached.value();
    }
    QStringList names;
    for (const QString& column : columns_) {
        names << quoteName(column);
    }
    Statement statement(connection_->db(), QStringLiteral("SELECT %1 FROM %2 WHERE %3 = ?")
                                               .arg(names.join(", "), rowsTable(), idColumn()));
    statement.bind(1, id);
    QVector<QVariant> values;
    if (statement.step()) {
        values.reserve(fields_.size());
        for (int i = 0; i < fields_.size(); ++i) {
            values << statement.value(i, fields_[i].type);
        }
    }
    if (cache_.size() >= kCacheLimit) {
        cache_.clear();
    }
    cache_.insert(id, values);
    return values;
}

qint64 Snapshot::baseRowId(qint64 id, int ridColumn) const {
    if (direct_) {
        return id;
    }
    Statement statement(connection_->db(), QStringLiteral("SELECT %1 FROM temp.%2 WHERE __id = ?")
                                               .arg(ridColumnName(ridColumn), table_));
    statement.bind(1, id);
    if (!statement.step() || statement.isNull(0)) {
        throw JetError(jet::kReadOnly,
                       QStringLiteral("Cannot update. Database or object is read-only."));
    }
    return statement.int64(0);
}

// Copies the base row's current values into the snapshot, so defaults, counters and
// conversions show as the table holds them.
void Snapshot::refreshFromBase(qint64 id, const QString& table, qint64 rid) {
    cache_.remove(id);
    if (direct_) {
        return;
    }
    QStringList sources, targets;
    for (int i = 0; i < fields_.size(); ++i) {
        if (fields_[i].originTable == table) {
            sources << quoteName(fields_[i].originColumn);
            targets << quoteName(columns_[i]);
        }
    }
    const int ridIndex = static_cast<int>(ridTables_.indexOf(table));
    sqlite3* db = connection_->db();
    Statement statement(db, QStringLiteral("UPDATE temp.%1 SET (%2, %3) = (SELECT %4, rowid FROM "
                                           "%5 WHERE rowid = ?) WHERE __id = ?")
                                .arg(table_, targets.join(", "), ridColumnName(ridIndex),
                                     sources.join(", "), qualifiedTable(table)));
    statement.bind(1, rid);
    statement.bind(2, id);
    statement.exec();
}

void Snapshot::updateRow(qint64 id, const QVector<QVariant>& values, const QVector<bool>& changed) {
    ScopedTransaction transaction(connection_->db());
    for (int t = 0; t < ridTables_.size(); ++t) {
        QStringList assignments;
        QVector<QVariant> bound;
        for (int i = 0; i < fields_.size(); ++i) {
            if (changed[i] && fields_[i].ridColumn == t) {
                assignments << quoteName(fields_[i].originColumn) + QStringLiteral(" = ?");
                bound << coerceForField(values[i], fields_[i].type);
            }
        }
        if (assignments.isEmpty()) {
            continue;
        }
        const qint64 rid = baseRowId(id, t);
        Statement statement(connection_->db(),
                            QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?")
                                .arg(qualifiedTable(ridTables_[t]), assignments.join(", ")));
        for (int b = 0; b < bound.size(); ++b) {
            statement.bind(b + 1, bound[b]);
        }
        statement.bind(static_cast<int>(bound.size()) + 1, rid);
        statement.exec();
        refreshFromBase(id, ridTables_[t], rid);
    }
    for (int i = 0; i < fields_.size(); ++i) {
        if (changed[i] && fields_[i].ridColumn < 0) {
            throw JetError(jet::kReadOnly,
                           QStringLiteral("Field '%1' is not updatable.").arg(fields_[i].name));
        }
    }
    transaction.commit();
}

qint64 Snapshot::insertRow(const QVector<QVariant>& values, const QVector<bool>& changed) {
    ScopedTransaction transaction(connection_->db());
    sqlite3* db = connection_->db();
    if (!direct_) {
        execSqlite(db, QStringLiteral("INSERT INTO temp.%1 (__id) VALUES (NULL)").arg(table_));
    }
    qint64 id = sqlite3_last_insert_rowid(db);
    bool any = false;
    for (int t = 0; t < ridTables_.size(); ++t) {
        QStringList columns;
        QVector<QVariant> bound;
        for (int i = 0; i < fields_.size(); ++i) {
            if (changed[i] && fields_[i].ridColumn == t) {
                columns << quoteName(fields_[i].originColumn);
                bound << coerceForField(values[i], fields_[i].type);
            }
        }
        if (columns.isEmpty()) {
            continue;
        }
        QStringList marks(columns.size(), QStringLiteral("?"));
        Statement statement(
            db, QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                    .arg(qualifiedTable(ridTables_[t]), columns.join(", "), marks.join(", ")));
        for (int b = 0; b < bound.size(); ++b) {
            statement.bind(b + 1, bound[b]);
        }
        statement.exec();
        if (direct_) {
            id = sqlite3_last_insert_rowid(db);
        }
        refreshFromBase(id, ridTables_[t], sqlite3_last_insert_rowid(db));
        any = true;
    }
    if (!any && !ridTables_.isEmpty()) {
        // A new row with no field set still becomes a row of the first table (its defaults).
        execSqlite(
            db, QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(qualifiedTable(ridTables_[0])));
        if (direct_) {
            id = sqlite3_last_insert_rowid(db);
        }
        refreshFromBase(id, ridTables_[0], sqlite3_last_insert_rowid(db));
    }
    transaction.commit();
    return id;
}

void Snapshot::deleteRow(qint64 id) {
    // In a join the row belongs to the last table the columns come from (the "many" side).
    int table = -1;
    for (const FieldInfo& field : fields_) {
        if (field.ridColumn >= 0) {
            table = field.ridColumn;
        }
    }
    if (table < 0) {
        throw JetError(jet::kReadOnly,
                       QStringLiteral("Cannot update. Database or object is read-only."));
    }
    ScopedTransaction transaction(connection_->db());
    const qint64 rid = baseRowId(id, table);
    Statement remove(
        connection_->db(),
        QStringLiteral("DELETE FROM %1 WHERE rowid = ?").arg(qualifiedTable(ridTables_[table])));
    remove.bind(1, rid);
    remove.exec();
    cache_.remove(id);
    if (direct_) {
        transaction.commit();
        return;
    }
    Statement forget(connection_->db(),
                     QStringLiteral("DELETE FROM temp.%1 WHERE __id = ?").arg(table_));
    forget.bind(1, id);
    forget.exec();
    transaction.commit();
}

}  // namespace engine
