// Times connecting an album database and building the source table from it, against the
// pipeline a user would script with mdbtools and the sqlite3 shell, for growing collections; then
// the rest of the track picker's opening (its two record sets and the source goto list).

#include <QCoreApplication>
#include <QDir>
#include <QHash>
#include <QProcess>
#include <QTextStream>
#include <vector>

#include "album_cache.h"
#include "measure.h"
#include "pipeline.h"
#include "timing.h"

namespace {

QTextStream out(stdout);

struct Settings {
    QString cache = QDir::temp().filePath(QStringLiteral("mixorama-bench"));
    std::vector<int> sizes{1000, 10000, 100000};
    int runs = 5;
};

// What the measuring child printed: the "run" lines and the last value of every other key.
struct Measured {
    std::vector<double> runs;
    QHash<QString, std::vector<double>> picker;  // "picker-..." lines: one value a run
    QHash<QString, QString> last;
    QStringList phases;
};

Measured measureInChild(const QString& file, int runs) {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--measure"), file, QString::number(runs)});
    child.waitForFinished(-1);
    if (child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
        throw std::runtime_error("the measuring process failed");
    Measured measured;
    for (const QString& line : QString::fromUtf8(child.readAllStandardOutput()).split('\n')) {
        const QString key = line.section(' ', 0, 0);
        if (key == QLatin1String("run"))
            measured.runs.push_back(line.section(' ', 1).toDouble());
        else if (key.startsWith(QLatin1String("picker-")))
            measured.picker[key].push_back(line.section(' ', 1).toDouble());
        else if (key == QLatin1String("phase"))
            measured.phases << line.section(' ', 1);
        else if (!key.isEmpty())
            measured.last.insert(key, line.section(' ', 1));
    }
    return measured;
}

// The rows of the second table: the picker's opening, split, in medians of the runs.
QStringList pickerRows;

void addPickerRow(int size, const Measured& ours) {
    const double build = bench::median(ours.runs);
    const double source = bench::median(ours.picker.value(QStringLiteral("picker-source")));
    const double target = bench::median(ours.picker.value(QStringLiteral("picker-target")));
    const double gotoList = bench::median(ours.picker.value(QStringLiteral("picker-goto")));
    pickerRows << QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 (%7 entries) | %8 |")
                      .arg(size)
                      .arg(ours.last.value("rows"))
                      .arg(build, 0, 'f', 3)
                      .arg(source, 0, 'f', 3)
                      .arg(target, 0, 'f', 3)
                      .arg(gotoList, 0, 'f', 3)
                      .arg(ours.last.value("goto-entries"))
                      .arg(build + source + target + gotoList, 0, 'f', 3);
}

void printRow(int size, const QString& file, int runs) {
    const Measured ours = measureInChild(file, runs);
    addPickerRow(size, ours);
    std::vector<double> pipeline;
    std::vector<double> exports;
    qint64 pipelineRows = 0;
    for (int i = 0; i < runs; ++i) {
        const bench::PipelineRun run = bench::runPipeline(file, true);
        pipeline.push_back(run.seconds);
        exports.push_back(run.exportSeconds);
        pipelineRows = run.rows;
    }
    const double oursMedian = bench::median(ours.runs);
    const double pipelineMedian = bench::median(pipeline);
    out << QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 | %7 | %8 | %9 |")
               .arg(size)
               .arg(ours.last.value("tracks"))
               .arg(ours.last.value("rows"))
               .arg(runs)
               .arg(oursMedian, 0, 'f', 3)
               .arg(pipelineMedian, 0, 'f', 3)
               .arg(pipelineMedian / oursMedian, 0, 'f', 2)
               .arg(ours.last.value("peak-kb").toLong() / 1024.0, 0, 'f', 1)
               .arg(ours.last.value("reader-peak-kb").toLong() / 1024.0, 0, 'f', 1)
        << " " << ours.last.value("baseline-kb").toLong() / 1024 << " MB before |"
        << (pipelineRows == ours.last.value("rows").toLongLong() ? "" : " ROW COUNTS DIFFER")
        << Qt::endl;
    out << "<!-- " << size
        << ": phases of one build, seconds: " << ours.phases.join(QStringLiteral("; "))
        << "; pipeline: mdb-export " << bench::median(exports) << " -->" << Qt::endl;
}

Settings parse(const QStringList& args) {
    Settings settings;
    for (int i = 1; i + 1 < args.size(); i += 2) {
        if (args[i] == QLatin1String("--cache"))
            settings.cache = args[i + 1];
        else if (args[i] == QLatin1String("--runs"))
            settings.runs = qMax(1, args[i + 1].toInt());
        else if (args[i] == QLatin1String("--sizes")) {
            settings.sizes.clear();
            for (const QString& size : args[i + 1].split(','))
                settings.sizes.push_back(size.toInt());
        }
    }
    return settings;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() == 4 && args[1] == QLatin1String("--measure"))
        return bench::measureInProcess(args[2], args[3].toInt());
    const Settings settings = parse(args);
    out << "| tracks asked | tracks | source rows | runs | connect + build (s, median) "
           "| mdb-export + sqlite3 (s, median) | pipeline / ours | peak memory (MB) "
           "| reader peak (MB) |"
        << Qt::endl
        << "|---|---|---|---|---|---|---|---|---|" << Qt::endl;
    try {
        for (int size : settings.sizes) {
            const int runs = size >= 100000 ? qMin(settings.runs, 3) : settings.runs;
            printRow(size, bench::cachedAlbumFile(settings.cache, size), runs);
        }
    } catch (const std::exception& error) {
        out << "failed: " << error.what() << Qt::endl;
        return 1;
    }
    out << Qt::endl
        << "| tracks asked | source rows | connect + build (s) | source record set, 30 rows read "
           "(s) | target record set (s) | goto list (s) | picker opening (s) |"
        << Qt::endl
        << "|---|---|---|---|---|---|---|" << Qt::endl;
    for (const QString& row : pickerRows)
        out << row << Qt::endl;
    return 0;
}
