#pragma once

#include <QString>
#include <QVariant>
#include <QVector>
#include <memory>

#include "engine/field_type.h"

namespace engine {

class Connection;
class Snapshot;
struct RowOrder;

enum class RecordsetType { Table, Dynaset, Snapshot };
enum class EditMode { None, Edit, Add };

struct FieldInfo {
    QString name;          // the name the statement gives the column (alias or column name)
    QString originTable;   // table of the file the value comes from, empty for expressions
    QString originColumn;  // column in that table
    FieldType type = FieldType::Text;
    int ridColumn = -1;  // column of the snapshot holding the row id of originTable, -1 if none
};

using Bookmark = qint64;

// The rows of one statement with a current position, as a data control or code moves through
// them. Rows are read once into a temporary table of the connection (an updatable record set on
// a whole table reads the table itself), so a large record set costs disk, not memory; values
// are fetched by position when they are read. Record sets of single tables and of joins whose
// tables' row ids can be traced are updatable: changes go to the tables the columns come from,
// in one transaction per update.
class Recordset {
  public:
    Recordset();  // closed: no rows, BOF and EOF
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    // Used by Database::openRecordset.
    Recordset(std::shared_ptr<Connection> connection, const QString& sqliteSelect,
              RecordsetType type);

    bool isOpen() const { return snapshot_ != nullptr; }
    void close();
    RecordsetType type() const { return type_; }

    // Position
    bool bof() const;
    bool eof() const;
    int recordCount() const;
    int absolutePosition() const;  // 0-based; -1 at BOF or EOF
    void setAbsolutePosition(int position);
    void moveFirst();
    void moveLast();
    void moveNext();
    void movePrevious();
    void move(int rows);

    // Finds with a criterion in the Jet dialect ("ArtistSort LIKE 'Beat**'"). A miss sets
    // noMatch() and leaves the position where it was. Throws JetError for a bad criterion.
    void findFirst(const QString& criterion);
    void findLast(const QString& criterion);
    void findNext(const QString& criterion);
    void findPrevious(const QString& criterion);
    bool noMatch() const { return noMatch_; }

    // Fields, by name without regard to case ("c_sumtrack"), or by index
    int fieldCount() const;
    const FieldInfo& field(int index) const;
    int fieldIndex(const QString& name) const;  // -1 when there is none
    QVariant value(const QString& name) const;  // throws 3265 for an unknown name, 3021 off a row
    QVariant value(int index) const;
    void setValue(const QString& name, const QVariant& value);  // only while editing (3020)
    void setValue(int index, const QVariant& value);
    // The values of the row at a position, without moving (for grids).
    QVector<QVariant> rowAt(int position) const;
    // The values of every row in order, fieldCount() to a row, read in one pass (for reports).
    QVector<QVariant> allRows() const;

    // Changes
    void addNew();
    void edit();
    void update();
    void cancelUpdate();
    void remove();  // deletes the current row; the position then holds no current row
    EditMode editMode() const { return editMode_; }

    // Bookmarks stay valid for the life of the record set and its clones.
    Bookmark bookmark() const;
    void setBookmark(Bookmark bookmark);
    Bookmark lastModified() const;

    // A second cursor over the same rows.
    Recordset clone() const;
    // Sort order ("ArtistSort, Length DESC") for record sets opened from this one.
    void setSort(const QString& sort) { sort_ = sort; }
    const QString& sort() const { return sort_; }
    Recordset openRecordset() const;  // the same rows, in the sort order when one is set
    void requery();

  private:
    void requireCurrentRow() const;
    void requireOpen() const;
    int findIn(int from, int step, const QString& criterion) const;
    void moveTo(int position);

    std::shared_ptr<Snapshot> snapshot_;
    std::shared_ptr<RowOrder> order_;
    RecordsetType type_ = RecordsetType::Snapshot;
    int position_ = -1;
    bool currentDeleted_ = false;
    bool noMatch_ = false;
    Bookmark lastModified_ = -1;
    EditMode editMode_ = EditMode::None;
    QVector<QVariant> buffer_;
    QVector<bool> changed_;
    QString sort_;
};

}  // namespace engine
