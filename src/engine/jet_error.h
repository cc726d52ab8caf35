#pragma once

#include <QString>
#include <stdexcept>

namespace engine {

// The engine's error numbers; callers branch on them.
namespace jet {
inline constexpr int kObjectNotFound = 3011;  // linked table missing in its file
inline constexpr int kNoCurrentRecord = 3021;
inline constexpr int kDuplicateValue = 3022;  // unique index or primary key violated
inline constexpr int kDatabaseExists = 3204;  // compact destination already exists
inline constexpr int kUpdateWithoutEdit = 3020;
inline constexpr int kTableExists = 3010;
inline constexpr int kNotADatabase = 3343;  // unrecognised database format
inline constexpr int kCannotOpenFile = 3051;
inline constexpr int kDatabaseCorrupt = 3049;  // a damaged file: not every row readable
inline constexpr int kCannotFindInputTable = 3078;
inline constexpr int kSyntaxError = 3075;   // syntax error in a query or criterion
inline constexpr int kItemNotFound = 3265;  // no such field or table definition
inline constexpr int kFieldRequired = 3314;
inline constexpr int kReadOnly = 3027;
inline constexpr int kDiskError = 3043;  // disk full or unreadable
inline constexpr int kFileNotFound = 3024;
inline constexpr int kTooFewParameters = 3061;  // unknown name in a statement
inline constexpr int kRecordDeleted = 3167;
inline constexpr int kLocked = 3218;
inline constexpr int kFileInUse = 3045;  // open elsewhere while it is to be compacted
inline constexpr int kConversionError = 3421;
inline constexpr int kInvalidOperation = 3219;
inline constexpr int kCharactersAfterEnd = 3142;  // a second statement after the first
inline constexpr int kQueryTooComplex = 3360;     // nesting deeper than the translator takes
inline constexpr int kGeneral = 3000;
}  // namespace jet

class JetError : public std::runtime_error {
  public:
    JetError(int number, const QString& description)
        : std::runtime_error(description.toStdString()),
          number_(number),
          description_(description) {}
    int number() const { return number_; }
    const QString& description() const { return description_; }

  private:
    int number_;
    QString description_;
};

// A read or change of a row that is not there.
inline JetError noCurrentRecordError() {
    return JetError(jet::kNoCurrentRecord, QStringLiteral("No current record."));
}

// Text after the end of the first statement: nothing of it runs.
inline JetError charactersAfterEndError() {
    return JetError(jet::kCharactersAfterEnd,
                    QStringLiteral("Characters found after end of SQL statement."));
}

// A statement nested deeper than the translator or SQLite's parser takes.
inline JetError queryTooComplexError() {
    return JetError(jet::kQueryTooComplex, QStringLiteral("Query is too complex."));
}

}  // namespace engine
