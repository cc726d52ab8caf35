#pragma once

#include <QDir>
#include <QFileInfo>
#include <QString>

#include "demo/demo_collection.h"

namespace bench {

// A compilation database of that many generated compilations, written once into the cache
// folder and reused by later runs.
inline QString cachedCompilations(const QString& cacheFolder, int compilations) {
    QDir().mkpath(cacheFolder);
    const QString path =
        QDir(cacheFolder).filePath(QStringLiteral("compilations-%1.mdb").arg(compilations));
    if (!QFileInfo::exists(path)) {
        demo::writeCompilations(path, compilations, 7);
    }
    return path;
}

}  // namespace bench
