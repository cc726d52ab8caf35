#pragma once

#include <QAbstractItemModel>
#include <QStringList>
#include <functional>
#include <vector>

#include "engine/database.h"

namespace ui {

// The navigator's two-level tree: performers at the root, read when the model loads, and a
// performer's title/album nodes, read only when a view expands the performer (fetchMore).
// Every read goes to the source's record source as it is at that moment, so a source sorted
// while the tree is open is read in its new form.
class PerformerTreeModel : public QAbstractItemModel {
    Q_OBJECT
  public:
    using RecordSource = std::function<QString()>;

    PerformerTreeModel(engine::Database database, RecordSource recordSource,
                       QObject* parent = nullptr);

    // Reads the root level afresh. A failing read leaves the tree empty.
    void loadRoot();

    // 1 for a performer, 2 for a title/album node, 0 for the invisible root.
    static int level(const QModelIndex& index);
    // The performer a node belongs to (its own text at level 1).
    QString performerOf(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

  signals:
    // A row without the value its node needs was met while reading a level.
    void incompleteData();

  private:
    struct Performer {
        QString text;
        QStringList children;
        bool fetched = false;
    };

    engine::Database database_;
    RecordSource recordSource_;
    std::vector<Performer> performers_;
};

}  // namespace ui
