#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <cstdint>
#include <vector>

// Writer of minimal Jet 3 (Access 97) and Jet 4 (Access 2000) database files: tables with
// rows, no indexes, no queries. Readers such as mdbtools see the tables, their columns and
// every value.
namespace jet4 {

// Jet 3: 2048-byte pages, text in the Windows code page cp1252.
// Jet 4: 4096-byte pages, text in Unicode.
enum class Format { Jet3, Jet4 };

enum class Type {
    Boolean,
    Byte,
    Integer,
    Long,
    Currency,
    Single,
    Double,
    DateTime,
    Text,
    Memo,
    Ole
};

struct Column {
    QString name;
    Type type;
    int size = 0;             // Text: maximum characters (1..255, 0 means 255); ignored otherwise
    bool autoNumber = false;  // Long only: an AutoNumber column (at most one a table)
};

// A table and its rows. Rows are encoded when added, so a table keeps only its bytes.
//
// Values per type (an invalid QVariant is Null; a yes/no column stores Null as No):
// Boolean bool; Byte, Integer, Long whole numbers in range; Currency a number of currency
// units (kept to four decimals); Single, Double numbers; DateTime QDateTime or QDate;
// Text, Memo QString; Ole QByteArray. In Jet 3 text, memo and all names must be cp1252.
class Table {
  public:
    struct ColumnPlace {
        int fixedOffset = 0;  // within the fixed part of a row; fixed columns only
        int varIndex = -1;    // position among the variable columns, -1 for fixed ones
    };
    // A long value stored outside its row; offset is where its 12-byte reference starts.
    struct LongValue {
        qsizetype row;
        int offset;
        QByteArray bytes;
    };

    // Throws std::runtime_error for bad names or columns.
    Table(QString name, std::vector<Column> columns, Format format = Format::Jet4);

    // Throws std::runtime_error for a wrong number of values or a value the column
    // cannot hold.
    void addRow(const QVariantList& values);

    const QString& name() const { return name_; }
    Format format() const { return format_; }
    const std::vector<Column>& columns() const { return columns_; }
    const std::vector<ColumnPlace>& places() const { return places_; }
    int fixedSize() const { return fixedSize_; }
    int varCount() const { return varCount_; }
    qsizetype rowCount() const { return qsizetype(rowEnds_.size()); }
    // The value the AutoNumber column gives the next row: one past the highest so far (1 in an
    // empty table); 0 when the table has no AutoNumber column.
    std::uint32_t nextAutoNumber() const;
    QByteArray row(qsizetype index) const;
    const std::vector<LongValue>& longValues() const { return longValues_; }

  private:
    qint64 checkedAutoNumber(const QVariantList& values) const;

    QString name_;
    std::vector<Column> columns_;
    Format format_;
    std::vector<ColumnPlace> places_;
    int fixedSize_ = 0;
    int varCount_ = 0;
    QByteArray rows_;
    std::vector<std::uint32_t> rowEnds_;
    std::vector<LongValue> longValues_;
    int autoNumberColumn_ = -1;
    qint64 highestAutoNumber_ = 0;
};

// Writes the tables, in order, to a new file at path (replacing any file there). The tables
// must have been made for the same format. Throws std::runtime_error when the file cannot be
// written, a table does not fit or was made for the other format.
void writeDatabase(const QString& path, const std::vector<Table>& tables,
                   Format format = Format::Jet4);

}  // namespace jet4
