#include "report_samples.h"

#include <algorithm>

namespace reporttest {

using report_engine::PageItem;

QVector<PageItem> itemsNamed(const report_engine::Page& page, const QString& name) {
    QVector<PageItem> result;
    for (const PageItem& item : page.items) {
        if (item.name == name || (name.isNull() && item.kind == report_engine::ItemKind::Text)) {
            result.append(item);
        }
    }
    std::stable_sort(result.begin(), result.end(), [](const PageItem& a, const PageItem& b) {
        return std::pair(a.rect.top(), a.rect.left()) < std::pair(b.rect.top(), b.rect.left());
    });
    return result;
}

QStringList textsNamed(const report_engine::Page& page, const QString& name) {
    QStringList result;
    for (const PageItem& item : itemsNamed(page, name)) {
        result.append(item.text);
    }
    return result;
}

QList<int> topsOf(const report_engine::Page& page, const QString& name) {
    QList<int> result;
    for (const PageItem& item : itemsNamed(page, name)) {
        result.append(item.rect.top());
    }
    return result;
}

}  // namespace reporttest
