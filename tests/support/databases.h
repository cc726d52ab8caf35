#pragma once

#include <QString>

namespace testsupport {

// Creates a compilation database at path from the template's schema file.
void createCompilationDatabase(const QString& path);
// Runs SQLite statements on a file directly, past the engine (to prepare data or inspect it),
// with the engine's text order and functions installed.
void execRaw(const QString& path, const QString& sql);
// The first column of the first row of a query run directly on the file.
QString queryRaw(const QString& path, const QString& sql);
// SQLite's own integrity check of a file: "ok" when it is whole.
QString integrityCheck(const QString& path);

}  // namespace testsupport
