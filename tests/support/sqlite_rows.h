#pragma once

#include <QList>
#include <QString>
#include <QVariant>

// Reads query results out of an SQLite file as plain values: whole numbers as qint64, reals as
// double, text as QString, blobs as QByteArray, Null as an invalid QVariant. The engine's text
// order and functions are installed, as the file's text columns are declared with them.
QList<QVariantList> sqliteRows(const QString& file, const QString& sql);
