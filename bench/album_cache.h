#pragma once

#include <QDir>
#include <QFileInfo>
#include <QString>
#include <QStringList>

#include "albumgen/albumgen.h"

namespace bench {

// The options of the benchmarks over a generated album collection:
// --tracks N, --runs R, --cache DIR.
struct AlbumBenchOptions {
    int tracks = 100000;
    int runs = 3;
    QString cache = QDir::temp().filePath(QStringLiteral("mixorama-bench"));
};

inline AlbumBenchOptions readAlbumBenchOptions(const QStringList& args) {
    AlbumBenchOptions options;
    for (int i = 0; i + 1 < args.size(); ++i) {
        if (args[i] == QLatin1String("--tracks"))
            options.tracks = args[i + 1].toInt();
        if (args[i] == QLatin1String("--runs"))
            options.runs = args[i + 1].toInt();
        if (args[i] == QLatin1String("--cache"))
            options.cache = args[i + 1];
    }
    return options;
}

// An album database of about that many tracks (generator seed 1), written once into the cache
// folder and shared by every benchmark that reads albums.
inline QString cachedAlbumFile(const QString& cacheFolder, int tracks) {
    constexpr int kTracksPerAlbum = 12;  // what the generator averages
    const QString path = QDir(cacheFolder).filePath(QStringLiteral("albums-%1.mdb").arg(tracks));
    if (!QFileInfo::exists(path)) {
        QDir().mkpath(cacheFolder);
        albumgen::Options options;
        options.albums = tracks / kTracksPerAlbum;
        options.seed = 1;
        albumgen::writeAlbumDatabase(path, options);
    }
    return path;
}

}  // namespace bench
