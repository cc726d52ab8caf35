#include "engine/database.h"

#include <sqlite3.h>

#include <QHash>
#include <QRegularExpression>

#include "engine/connection.h"
#include "engine/connection_tables.h"
#include "engine/jet_dialect.h"
#include "engine/jet_error.h"
#include "engine/sqlite_statement.h"
#include "engine/transaction.h"

namespace engine {

namespace {

JetError itemNotFound() {
    return JetError(jet::kItemNotFound, QStringLiteral("Item not found in this collection."));
}

bool isPlainName(const QString& source) {
    static const QRegularExpression name(QStringLiteral("^\\s*\\[?[\\w $]+\\]?\\s*$"));
    return name.match(source).hasMatch() &&
           !source.trimmed().startsWith(QLatin1String("SELECT"), Qt::CaseInsensitive);
}

QString stripBrackets(QString name) {
    name = name.trimmed();
    if (name.startsWith(QLatin1Char('[')) && name.endsWith(QLatin1Char(']'))) {
        name = name.mid(1, name.size() - 2);
    }
    return name;
}

// SELECT ... INTO: the new table keeps the column types of the columns it is made from.
int selectInto(sqlite3* db, const QString& table, const QString& select) {
    Statement source(db, select);
    QStringList columns;
    QStringList names;
    for (int i = 0; i < source.columnCount(); ++i) {
        const QString declared = source.columnDeclaredType(i);
        QString name = source.columnName(i);
        for (int n = 2; names.contains(name, Qt::CaseInsensitive); ++n) {
            name = source.columnName(i) + QStringLiteral("_%1").arg(n);
        }
        names << name;
        QString column = quoteName(name);
        if (!declared.isEmpty()) {
            const FieldType type = fieldTypeFromDeclared(declared);
            column += QLatin1Char(' ') + declared;
            if (isTextType(type)) {
                column += textCollationClause();
            }
        }
        columns << column;
    }
    const QString target = qualifiedTable(table);
    ScopedTransaction transaction(db);
    execSqlite(db, QStringLiteral("CREATE TABLE %1 (%2)").arg(target, columns.join(", ")));
    execSqlite(db, QStringLiteral("INSERT INTO %1 %2").arg(target, select));
    const int rows = sqlite3_changes(db);
    transaction.commit();
    return rows;
}

// The file of a Connect string. DATABASE= is its last item and its value runs to the end of the
// string, so that a file name holding ";" stays whole.
QString linkedFile(const TableDef& definition) {
    const QLatin1String key("DATABASE=");
    const qsizetype at = definition.connect.indexOf(key, 0, Qt::CaseInsensitive);
    if (at < 0) {
        throw JetError(jet::kNotADatabase, QStringLiteral("Could not find installable ISAM."));
    }
    return definition.connect.mid(at + key.size());
}

QString sourceTable(const TableDef& definition) {
    return definition.sourceTableName.isEmpty() ? definition.name : definition.sourceTableName;
}

}  // namespace

Database::Database(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

bool Database::isOpen() const {
    return connection_ && connection_->isOpen();
}

QString Database::name() const {
    return connection_ ? connection_->path() : QString();
}

bool Database::readOnly() const {
    return connection_ && connection_->readOnly();
}

void Database::close() {
    if (connection_) {
        connection_->close();
        connection_.reset();
    }
}

std::shared_ptr<Connection> Database::connection() const {
    if (!isOpen()) {
        throw JetError(jet::kInvalidOperation, QStringLiteral("Object invalid or no longer set."));
    }
    return connection_;
}

int Database::execute(const QString& jetSql) {
    sqlite3* db = connection()->db();
    const TranslatedSql translated = translateJetSql(jetSql);
    if (!translated.intoTable.isEmpty()) {
        return selectInto(db, translated.intoTable, translated.sql);
    }
    if (translated.returnsRows) {
        throw JetError(jet::kInvalidOperation, QStringLiteral("Cannot execute a select query."));
    }
    ScopedTransaction transaction(db);
    Statement statement(db, translated.sql);
    statement.exec();
    const int rows = sqlite3_changes(db);
    transaction.commit();
    return rows;
}

Recordset Database::openRecordset(const QString& source, RecordsetType type) {
    std::shared_ptr<Connection> shared = connection();
    if (shared->isForeign()) {
        throw JetError(jet::kReadOnly,
                       QStringLiteral("The rows of '%1' cannot be read here.").arg(shared->path()));
    }
    QString select;
    if (isPlainName(source)) {
        const QString name = stripBrackets(source);
        if (!hasTable(name) && !shared->hasView(name)) {
            throw JetError(jet::kCannotFindInputTable,
                           QStringLiteral("The Microsoft Jet database engine cannot find the input "
                                          "table or query '%1'. Make sure it exists and that its "
                                          "name is spelled correctly.")
                               .arg(name));
        }
        select = QStringLiteral("SELECT * FROM ") + quoteName(name);
    } else {
        const TranslatedSql translated = translateJetSql(source);
        if (!translated.returnsRows) {
            throw JetError(jet::kInvalidOperation, QStringLiteral("Invalid operation."));
        }
        select = translated.sql;
    }
    return Recordset(shared, select, type);
}

QStringList Database::tableNames() const {
    return connection()->tableNames();
}

bool Database::hasTable(const QString& name) const {
    return tableNames().contains(name, Qt::CaseInsensitive);
}

void Database::appendTable(const TableDef& definition) {
    std::shared_ptr<Connection> shared = connection();
    if (!definition.connect.isEmpty()) {
        shared->addLink(definition.name, linkedFile(definition), sourceTable(definition));
        return;
    }
    if (hasTable(definition.name)) {
        throw JetError(jet::kTableExists,
                       QStringLiteral("Table '%1' already exists.").arg(definition.name));
    }
    QStringList columns;
    for (const FieldDef& field : definition.fields) {
        QString column =
            quoteName(field.name) + QLatin1Char(' ') + declaredType(field.type, field.size);
        if (isTextType(field.type)) {
            column += textCollationClause();
        }
        columns << column;
    }
    execSqlite(shared->db(), QStringLiteral("CREATE TABLE %1 (%2)")
                                 .arg(qualifiedTable(definition.name), columns.join(", ")));
}

void Database::appendTables(const std::vector<TableDef>& definitions) {
    std::shared_ptr<Connection> shared = connection();
    QHash<QString, QStringList> byFile;
    QStringList files;
    for (const TableDef& definition : definitions) {
        if (!definition.connect.isEmpty()) {
            const QString file = linkedFile(definition);
            if (!byFile.contains(file)) {
                files << file;
            }
            byFile[file] << sourceTable(definition);
        }
    }
    for (const QString& file : files) {
        shared->prefetchLinkedTables(file, byFile.value(file));
    }
    for (const TableDef& definition : definitions) {
        appendTable(definition);
    }
}

void Database::deleteTable(const QString& name) {
    std::shared_ptr<Connection> shared = connection();
    if (shared->removeLink(name)) {
        return;
    }
    if (!shared->hasLocalTable(name)) {
        throw itemNotFound();
    }
    execSqlite(shared->db(), QStringLiteral("DROP TABLE %1").arg(qualifiedTable(name)));
}

void Database::appendField(const QString& table, const FieldDef& field) {
    std::shared_ptr<Connection> shared = connection();
    if (!shared->hasLocalTable(table)) {
        throw itemNotFound();
    }
    QString column =
        quoteName(field.name) + QLatin1Char(' ') + declaredType(field.type, field.size);
    if (isTextType(field.type)) {
        column += textCollationClause();
    }
    execSqlite(shared->db(),
               QStringLiteral("ALTER TABLE %1 ADD COLUMN %2").arg(qualifiedTable(table), column));
}

QString Database::linkConnect(const QString& table) const {
    const auto& links = connection()->links();
    const auto it = links.find(table.toLower());
    return it == links.end() ? QString() : QStringLiteral(";DATABASE=") + it->file;
}

std::vector<IncompleteTable> Database::incompleteLinks() const {
    return connection()->incompleteLinks();
}

void Database::createQueryDef(const QString& name, const QString& jetSql) {
    std::shared_ptr<Connection> shared = connection();
    if (name.isEmpty()) {
        execute(jetSql);
        return;
    }
    const TranslatedSql translated = translateJetSql(jetSql);
    if (!translated.returnsRows) {
        throw JetError(jet::kInvalidOperation, QStringLiteral("Invalid operation."));
    }
    // A view of the file reads the file's tables only, so a query over a connection table is
    // the connection's too; it shadows a query of that name in the file.
    const bool ofConnection = readsConnectionTable(translated.sql);
    if (ofConnection ? shared->hasConnectionView(name) || hasTable(name)
                     : shared->hasView(name) || hasTable(name)) {
        throw JetError(jet::kTableExists, QStringLiteral("Object '%1' already exists.").arg(name));
    }
    execSqlite(shared->db(),
               QStringLiteral("CREATE VIEW %1.%2 AS %3")
                   .arg(ofConnection ? QStringLiteral("temp") : QStringLiteral("main"),
                        quoteName(name), translated.sql));
}

void Database::deleteQueryDef(const QString& name) {
    std::shared_ptr<Connection> shared = connection();
    const QString schema = shared->hasConnectionView(name) ? QStringLiteral("temp")
                           : shared->hasFileView(name)     ? QStringLiteral("main")
                                                           : QString();
    if (schema.isEmpty()) {
        throw itemNotFound();
    }
    execSqlite(shared->db(), QStringLiteral("DROP VIEW %1.%2").arg(schema, quoteName(name)));
}

QStringList Database::queryDefNames() const {
    std::shared_ptr<Connection> shared = connection();
    Statement query(
        shared->db(),
        QStringLiteral("SELECT name FROM main.sqlite_master WHERE type = 'view' ORDER BY name"));
    QStringList names;
    while (query.step()) {
        names << query.text(0);
    }
    for (const QString& name : shared->connectionViewNames()) {
        if (!names.contains(name, Qt::CaseInsensitive)) {
            names << name;
        }
    }
    return names;
}

}  // namespace engine
