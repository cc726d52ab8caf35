#include "ui/controls/performer_tree_model.h"

#include "assembly/performer_tree.h"
#include "engine/jet_error.h"

namespace ui {

namespace {

// internalId of a title/album node: its performer's row + 1; performers carry 0.
constexpr quintptr kPerformerId = 0;

}  // namespace

PerformerTreeModel::PerformerTreeModel(engine::Database database, RecordSource recordSource,
                                       QObject* parent)
    : QAbstractItemModel(parent),
      database_(std::move(database)),
      recordSource_(std::move(recordSource)) {}

void PerformerTreeModel::loadRoot() {
    assembly::NodeLevel root;
    try {
        root = assembly::readRootNodes(database_, recordSource_());
    } catch (const engine::JetError&) {
        // The tree stays empty; the navigator has nothing to show for this source.
    }
    beginResetModel();
    performers_.clear();
    performers_.reserve(size_t(root.texts.size()));
    for (const QString& text : root.texts) {
        performers_.push_back({text, {}, false});
    }
    endResetModel();
    if (root.incomplete) {
        emit incompleteData();
    }
}

int PerformerTreeModel::level(const QModelIndex& index) {
    if (!index.isValid()) {
        return 0;
    }
    return index.internalId() == kPerformerId ? 1 : 2;
}

QString PerformerTreeModel::performerOf(const QModelIndex& index) const {
    if (!index.isValid()) {
        return {};
    }
    const size_t row = level(index) == 1 ? size_t(index.row()) : size_t(index.internalId() - 1);
    return row < performers_.size() ? performers_[row].text : QString();
}

QModelIndex PerformerTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    if (!parent.isValid()) {
        return createIndex(row, column, kPerformerId);
    }
    return createIndex(row, column, quintptr(parent.row()) + 1);
}

QModelIndex PerformerTreeModel::parent(const QModelIndex& child) const {
    if (level(child) != 2) {
        return {};
    }
    return createIndex(int(child.internalId() - 1), 0, kPerformerId);
}

int PerformerTreeModel::rowCount(const QModelIndex& parent) const {
    switch (level(parent)) {
        case 0:
            return int(performers_.size());
        case 1:
            return int(performers_[size_t(parent.row())].children.size());
        default:
            return 0;
    }
}

int PerformerTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant PerformerTreeModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid()) {
        return {};
    }
    if (level(index) == 1) {
        return performers_[size_t(index.row())].text;
    }
    return performers_[size_t(index.internalId() - 1)].children[index.row()];
}

// A performer shows its expander until its level was read and found empty.
bool PerformerTreeModel::hasChildren(const QModelIndex& parent) const {
    switch (level(parent)) {
        case 0:
            return !performers_.empty();
        case 1: {
            const Performer& performer = performers_[size_t(parent.row())];
            return !performer.fetched || !performer.children.isEmpty();
        }
        default:
            return false;
    }
}

bool PerformerTreeModel::canFetchMore(const QModelIndex& parent) const {
    return level(parent) == 1 && !performers_[size_t(parent.row())].fetched;
}

void PerformerTreeModel::fetchMore(const QModelIndex& parent) {
    if (!canFetchMore(parent)) {
        return;
    }
    Performer& performer = performers_[size_t(parent.row())];
    QStringList children;
    try {
        children = assembly::readChildNodes(database_, recordSource_(), performer.text);
    } catch (const engine::JetError&) {
        // A failing read gives the performer no children, as an empty one does.
    }
    performer.fetched = true;
    if (!children.isEmpty()) {
        beginInsertRows(parent, 0, int(children.size()) - 1);
        performer.children = children;
        endInsertRows();
    } else {
        emit dataChanged(parent, parent);  // the expander goes
    }
}

}  // namespace ui
