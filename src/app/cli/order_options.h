#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <array>
#include <utility>

#include "query/filter_clause.h"
#include "query/sort_clause.h"

// The options that name a filter and a sort by the captions of the filter and sort dialogs.
namespace cli {

// The two rows of the filter dialog and their concatenation, as --filter gave them.
struct FilterOption {
    std::array<query::FilterRow, 2> rows;
    QString concatenation;
};

// The captions of the sort dialog's levels as --sort gave them, in the order given: the
// variable and the order.
struct SortOption {
    QVector<std::pair<QString, QString>> levels;
};

// Reads "VARIABLE COMPARISON TEXT [And|Or VARIABLE COMPARISON TEXT]" that follows "--filter" at
// args[i], and leaves i on the last value read. Any word before a second variable is read as the
// concatenation (the filter then refuses one that is not And or Or). A message when fewer than
// three values follow, or when the concatenation lacks its three.
QString takeFilter(const QStringList& args, int& i, FilterOption& filter);

// Reads "VARIABLE Ascending|Descending" that follows "--sort" at args[i] into the next level,
// and leaves i on the last value read. A message when a value is missing or when a fourth level
// is given.
QString takeSortLevel(const QStringList& args, int& i, SortOption& sort);

// Composes the order text of the levels given (the caller's default order when none was given)
// into orderText; a message, leaving orderText alone, when the caller's lists lack a caption.
QString composeOrderText(const SortOption& sort, query::SortCaller caller, QString& orderText);

}  // namespace cli
