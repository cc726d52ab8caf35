#include "platform/split_path.h"

namespace platform {

namespace {
bool isSeparator(QChar c) {
    return c == QLatin1Char('\\') || c == QLatin1Char('/');
}
}  // namespace

SplitPath splitPath(const QString& path) {
    QString withoutExtension = path;
    for (qsizetype i = path.size() - 1; i >= 0; --i) {
        if (isSeparator(path[i])) {
            break;
        }
        if (path[i] == QLatin1Char('.')) {
            withoutExtension = path.left(i);
            break;
        }
    }
    for (qsizetype i = withoutExtension.size() - 1; i >= 0; --i) {
        if (isSeparator(withoutExtension[i])) {
            return {withoutExtension.left(i + 1), withoutExtension.mid(i + 1)};
        }
    }
    return {withoutExtension, QString()};
}

}  // namespace platform
