#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>
#include <QVector>

namespace report_engine {

// The rows a report prints, in print order. Fields are found by name without regard to case, as
// record sets find them.
class RowSource {
  public:
    virtual ~RowSource() = default;
    virtual int rowCount() const = 0;
    virtual int fieldIndex(const QString& name) const = 0;  // -1 when there is none
    virtual QVariant value(int row, int field) const = 0;
};

// Rows held in memory.
class RowTable : public RowSource {
  public:
    explicit RowTable(QStringList fields = {});
    // The fields are the union of the maps' keys, in the order first seen.
    static RowTable fromMaps(const QVector<QVariantMap>& maps);

    void append(QVector<QVariant> values);  // one value per field
    int rowCount() const override { return int(rows_.size()); }
    int fieldIndex(const QString& name) const override;
    QVariant value(int row, int field) const override;

  private:
    QStringList fields_;
    QVector<QVector<QVariant>> rows_;
};

// One row of a source as format steps and expressions read it. A view without a row (a report
// without rows) gives null values; an unknown field name is an error either way.
class RowView {
  public:
    RowView() = default;
    RowView(const RowSource* source, int row) : source_(source), row_(row) {}

    bool hasRow() const;
    int index() const { return row_; }
    QVariant value(const QString& field) const;  // throws ReportError for an unknown field
    const RowSource* source() const { return source_; }

  private:
    const RowSource* source_ = nullptr;
    int row_ = -1;
};

}  // namespace report_engine
