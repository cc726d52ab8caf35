#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <vector>

#include "jet4/jet4.h"

// Compilation databases as the program's earlier versions kept them: Access files with the five
// tables, written by the Jet writer of tools/jet4.
namespace testsupport {

// Rows of the five tables, each in the columns oldColumns() gives for its table, in the values
// the Jet writer takes (QDate for dates, bool for yes/no, an invalid QVariant for Null).
struct OldCompilationRows {
    std::vector<QVariantList> compilations;
    std::vector<QVariantList> tracks;
    std::vector<QVariantList> formats;
    std::vector<QVariantList> lengths;
    std::vector<QVariantList> manufacturers;
};

// The columns of "Compilation", "CompilationTrack", "LstFormat", "LstLength" or
// "LstManufacturer" as the earlier versions defined them: the names of today's template, Access
// types, the compilation id an AutoNumber.
std::vector<jet4::Column> oldColumns(const QString& table);

// Six compilations (ids with gaps, one without tracks) and `trackCount` tracks spread over the
// other five: names with é and ß (and さくら in Jet 4), a cover in RTF with \'e9 escapes and
// braces, Null and empty notes, Null and real dates (one with a time of day), yes/no both ways,
// value lists other than the template's.
OldCompilationRows sampleOldCompilations(jet4::Format format, int trackCount = 300);

// Writes the five tables in that order.
void writeOldCompilationDatabase(const QString& path, const OldCompilationRows& rows,
                                 jet4::Format format = jet4::Format::Jet4);

// Damages an Access file as a bad sector does: one data page in the middle of the table that
// has the most data pages becomes zeros, and the reader finds no rows on it.
void zeroADataPageOfTheLargestTable(const QString& path, jet4::Format format);

// The SHA-256 of a file's bytes, to show that a file was not written.
QByteArray fileDigest(const QString& path);

}  // namespace testsupport
