#include "cli/order_options.h"

namespace cli {

namespace {

bool isConcatenation(const QString& word) {
    return word.compare(QLatin1String("And"), Qt::CaseInsensitive) == 0 ||
           word.compare(QLatin1String("Or"), Qt::CaseInsensitive) == 0;
}

// Whether a second row follows the first at args[i + 1]: And or Or, or any other word (an empty
// one too) before a filter variable. Such a word is taken as the concatenation, so that the
// filter refuses it with its own message, as the dialog does; a file name after the first row
// is neither.
bool secondRowFollows(const QStringList& args, int i) {
    if (i + 1 >= args.size() || args[i + 1].startsWith(QLatin1String("--"))) {
        return false;
    }
    return isConcatenation(args[i + 1]) ||
           (i + 2 < args.size() && query::findVariable(args[i + 2]) != nullptr);
}

QString keyCaptions(query::SortCaller caller) {
    QStringList captions;
    for (const query::SortKey& key : query::sortKeys(caller)) {
        captions << key.caption;
    }
    return captions.join(QStringLiteral(", "));
}

}  // namespace

QString takeFilter(const QStringList& args, int& i, FilterOption& filter) {
    const QString incomplete =
        QStringLiteral("--filter needs VARIABLE COMPARISON TEXT, and three more after And or Or.");
    if (i + 3 >= args.size()) {
        return incomplete;
    }
    filter.rows[0] = {args[i + 1], args[i + 2], args[i + 3]};
    i += 3;
    if (secondRowFollows(args, i)) {
        if (i + 4 >= args.size()) {
            return incomplete;
        }
        filter.concatenation = args[i + 1];
        filter.rows[1] = {args[i + 2], args[i + 3], args[i + 4]};
        i += 4;
    }
    return {};
}

QString takeSortLevel(const QStringList& args, int& i, SortOption& sort) {
    if (i + 2 >= args.size()) {
        return QStringLiteral("--sort needs VARIABLE Ascending|Descending.");
    }
    if (sort.levels.size() == int(query::SortLevels().size())) {
        return QStringLiteral("--sort may be given at most three times.");
    }
    sort.levels.append({args[i + 1], args[i + 2]});
    i += 2;
    return {};
}

QString composeOrderText(const SortOption& sort, query::SortCaller caller, QString& orderText) {
    query::SortLevels levels;
    for (qsizetype index = 0; index < sort.levels.size(); ++index) {
        const auto& [key, direction] = sort.levels[index];
        const std::optional<query::SortLevel> level =
            query::sortLevelFromCaptions(caller, key, direction);
        if (!level) {
            return QStringLiteral(
                       "\"%1 %2\" is no sort order: the variables are %3; the orders "
                       "Ascending and Descending.")
                .arg(key, direction, keyCaptions(caller));
        }
        levels[std::size_t(index)] = *level;
    }
    orderText = query::composeSortClause(levels, caller);
    return {};
}

}  // namespace cli
