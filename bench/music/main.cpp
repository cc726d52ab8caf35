// The music folder scan on a generated tree: the first scan, a rescan of the unchanged tree and a
// rescan after 100 files changed; the tags alone (TagLib's share of the first scan) and the
// picker's source built on the scan's album tables. Counters give files per second and the peak
// memory of the process (kB), which must not grow with the tree. The tree holds N copies of the MP3
// sample, each tagged with its own title in albums of 10 tracks and performers of 10 albums.
//   MIXORAMA_BENCH_MUSIC_FILES=2000 bench_music [Google Benchmark options]   (N is 20,000 unset)
#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fileref.h>
#include <tag.h>

#include <sys/resource.h>

#include "engine/workspace.h"
#include "music/folder_scan.h"
#include "music/track_tags.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
#include "target_compilation.h"

namespace {

int fileCount() {
    const int n = qEnvironmentVariableIntValue("MIXORAMA_BENCH_MUSIC_FILES");
    return n > 0 ? n : 20000;
}

QString trackPath(int i) {
    return QStringLiteral("Performer %1/Album %2/%3 - Track.mp3")
        .arg(i / 100)
        .arg(i / 10)
        .arg(i % 10 + 1, 2, 10, QLatin1Char('0'));
}

void tagTrack(const QString& file, int i, const QString& title) {
    TagLib::FileRef ref(QFile::encodeName(file).constData());
    TagLib::Tag* tag = ref.tag();
    tag->setTitle(TagLib::String(title.toStdString(), TagLib::String::UTF8));
    tag->setArtist(TagLib::String(QStringLiteral("Performer %1").arg(i / 100).toStdString()));
    tag->setAlbum(TagLib::String(QStringLiteral("Album %1").arg(i / 10).toStdString()));
    tag->setTrack(unsigned(i % 10 + 1));
    ref.save();
}

// The generated tree, made once for all the measurements.
struct Tree {
    QTemporaryDir dir;
    QString root = dir.filePath(QStringLiteral("Music"));
    QString cache = dir.filePath(QStringLiteral("cache.sqlite"));
    int files = fileCount();

    Tree() {
        const QString sample = QStringLiteral(MIXORAMA_SOURCE_DIR "/tests/data/audio/sample.mp3");
        for (int i = 0; i < files; ++i) {
            const QString file = root + QLatin1Char('/') + trackPath(i);
            QDir().mkpath(QFileInfo(file).path());
            QFile::copy(sample, file);
            QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
            tagTrack(file, i, QStringLiteral("Track %1").arg(i));
        }
    }
};

Tree& tree() {
    static Tree generated;
    return generated;
}

double peakKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss);
}

void report(benchmark::State& state, const music::ScanSummary& summary) {
    state.counters["files"] = double(tree().files);
    state.counters["files_per_s"] = benchmark::Counter(
        double(summary.filesRead), benchmark::Counter::kIsIterationInvariantRate);
    state.counters["peak_kB"] = peakKilobytes();
    state.counters["read"] = double(summary.filesRead);
    state.counters["tracks"] = double(summary.tracks);
}

void firstScan(benchmark::State& state) {
    music::ScanSummary summary;
    for (auto _ : state) {
        state.PauseTiming();
        QFile::remove(tree().cache);
        state.ResumeTiming();
        summary = music::scanFolder(tree().root, tree().cache);
    }
    report(state, summary);
}

void unchangedRescan(benchmark::State& state) {
    music::scanFolder(tree().root, tree().cache);
    music::ScanSummary summary;
    for (auto _ : state)
        summary = music::scanFolder(tree().root, tree().cache);
    report(state, summary);
}

void rescanAfterChanges(benchmark::State& state) {
    music::scanFolder(tree().root, tree().cache);
    music::ScanSummary summary;
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        ++round;
        const int step = std::max(1, tree().files / 100);
        for (int i = 0; i < tree().files; i += step)
            tagTrack(tree().root + QLatin1Char('/') + trackPath(i), i,
                     QStringLiteral("Track %1, take %2").arg(i).arg(round));
        state.ResumeTiming();
        summary = music::scanFolder(tree().root, tree().cache);
    }
    report(state, summary);
}

// What the first scan spends in TagLib: every file's tags and audio properties, nothing stored.
void tagReading(benchmark::State& state) {
    QStringList files;
    for (int i = 0; i < tree().files; ++i)
        files << tree().root + QLatin1Char('/') + trackPath(i);
    qint64 read = 0;
    for (auto _ : state)
        for (const QString& file : files)
            read += music::readTags(file).has_value() ? 1 : 0;
    state.counters["files_per_s"] =
        benchmark::Counter(double(files.size()), benchmark::Counter::kIsIterationInvariantRate);
    state.counters["read"] = double(read) / double(state.iterations());
}

// Opening the picker on the scanned folder: the cache linked as an album database and TempSource
// built from it.
void pickerSource(benchmark::State& state) {
    music::scanFolder(tree().root, tree().cache);
    QTemporaryDir work;
    int run = 0;
    store::AlbumSourceState album;
    for (auto _ : state) {
        state.PauseTiming();
        engine::Database database =
            engine::Workspace::defaultWorkspace().openDatabase(bench::templateCopy(work, ++run));
        platform::ScriptedDialogs dialogs;
        dialogs.answerFile(tree().cache);
        store::EditorConnection editor;
        store::connectAlbumDatabase(database, dialogs, album, editor);
        state.ResumeTiming();
        store::buildTempSource(database, album);
        state.PauseTiming();
        database.close();
        state.ResumeTiming();
    }
    state.counters["rows"] = double(album.passedCount);
    state.counters["peak_kB"] = peakKilobytes();
}

}  // namespace

BENCHMARK(tagReading)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(pickerSource)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(firstScan)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(unchangedRescan)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(rescanAfterChanges)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();

BENCHMARK_MAIN();
