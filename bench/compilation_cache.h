#pragma once

#include <QDir>
#include <QFileInfo>
#include <QString>
#include <QStringList>

#include "demo/demo_collection.h"

namespace bench {

// The options of the benchmarks over a generated compilation database:
// --compilations N, --runs R, --cache DIR.
struct CompilationBenchOptions {
    int compilations = 10000;
    int runs = 5;
    QString cache = QDir::temp().filePath(QStringLiteral("mixorama-bench"));
};

inline CompilationBenchOptions readCompilationBenchOptions(const QStringList& args,
                                                           int defaultRuns) {
    CompilationBenchOptions options;
    options.runs = defaultRuns;
    for (int i = 0; i + 1 < args.size(); ++i) {
        if (args[i] == QLatin1String("--compilations"))
            options.compilations = args[i + 1].toInt();
        if (args[i] == QLatin1String("--runs"))
            options.runs = args[i + 1].toInt();
        if (args[i] == QLatin1String("--cache"))
            options.cache = args[i + 1];
    }
    return options;
}

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
