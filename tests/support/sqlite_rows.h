#pragma once

#include "support/databases.h"

// testsupport::SqliteFile::rows on a file opened read-only; no rows when it cannot be read.
QList<QVariantList> sqliteRows(const QString& file, const QString& sql);
