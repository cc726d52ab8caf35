#pragma once

#include <QList>
#include <QString>
#include <QVariant>

// Reads query results out of an SQLite file as plain values: whole numbers as qint64, reals as
// double, text as QString, blobs as QByteArray, Null as an invalid QVariant.
QList<QVariantList> sqliteRows(const QString& file, const QString& sql);
