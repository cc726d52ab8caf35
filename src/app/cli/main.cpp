// mixorama-cli: Mixorama's scriptable commands for users and tests.
#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>
#include <QTextStream>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>

#include "access/access_reader.h"
#include "cli/commands.h"
#include "engine/scratch_files.h"

namespace {

using Command = std::function<int(const QStringList&, cli::Streams)>;

const std::map<QString, Command>& commands() {
    static const std::map<QString, Command> table{
        {QStringLiteral("new"), cli::newDatabase},
        {QStringLiteral("sql"), cli::runSql},
        {QStringLiteral("compact"), cli::compact},
        {QStringLiteral("check"), cli::check},
        {QStringLiteral("convert"), cli::convert},
        {QStringLiteral("make-albums"), cli::makeAlbums},
        {QStringLiteral("tempsource"), cli::tempSource},
        {QStringLiteral("add-compilation"), cli::addCompilation},
        {QStringLiteral("cover-text"), cli::coverText},
        {QStringLiteral("cover"), cli::cover},
        {QStringLiteral("calibration-page"), cli::calibrationPage},
        {QStringLiteral("add-tracks"), cli::addTracks},
        {QStringLiteral("remove-track"), cli::removeTrack},
        {QStringLiteral("tracks"), cli::tracks},
        {QStringLiteral("move-track"), cli::moveTrack},
        {QStringLiteral("renumber"), cli::renumber},
        {QStringLiteral("report"), cli::writeListReport},
        {QStringLiteral("export"), cli::exportPlaylist},
    };
    return table;
}

void printHelp(QTextStream& out) {
    out << "usage: mixorama-cli COMMAND ARGS\n"
           "  new FILE               create a compilation database from the template\n"
           "  sql FILE \"STATEMENT\"   run one statement in the Access SQL dialect\n"
           "  compact FILE           repair and compact a compilation database; converts\n"
           "                         one of an earlier version and repairs its sums and\n"
           "                         track numbers, printing what it changed\n"
           "  check FILE             check the file and every compilation's sums and track\n"
           "                         numbers: prints ok or each problem (exit 1)\n"
           "  convert OLD.mdb NEW.mdb [--keep-partial]\n"
           "                         copy an Access compilation database of an earlier\n"
           "                         version into a new database; a damaged file whose\n"
           "                         tables cannot be read whole is refused unless\n"
           "                         --keep-partial keeps the rows that could be read\n"
           "  make-albums OUT.mdb --albums N --seed S [--no-rating]\n"
           "                         write a generated album database (Access file)\n"
           "  tempsource DB ALBUM.mdb|FOLDER [--print]\n"
           "                         connect an album database or a music folder and\n"
           "                         build TempSource. A folder's scan is cached: the\n"
           "                         option --music-cache DIR (with any command) or\n"
           "                         MIXORAMA_MUSIC_CACHE names the cache folder\n"
           "  add-compilation DB NAME --format F --length MIN [--manufacturer M]\n"
           "                  [--storage S] [--date DD.MM.YY] [--notes N]\n"
           "                         store a new compilation as the editor's Update does\n"
           "  cover-text DB NAME p|pa|ps [--by-time]\n"
           "                         compose and store a compilation's cover text; prints\n"
           "                         the text, then the bold ranges (start length)\n"
           "  cover DB NAME OUT.pdf [--offset-x MM] [--offset-y MM] [--scale-x PCT]\n"
           "        [--scale-y PCT] [--outline]\n"
           "                         write a compilation's cover (MD or CD-ROM) as PDF,\n"
           "                         true to size; for a printer that does not print\n"
           "                         true, moved by the offsets and scaled by the\n"
           "                         percentages (as its printer calibration says);\n"
           "                         --outline draws only the frames and fold lines\n"
           "  calibration-page OUT.pdf\n"
           "                         write the printer calibration's test page: a frame\n"
           "                         to measure, whose offsets and scales cover takes\n"
           "  add-tracks DB NAME ALBUM.mdb|FOLDER [--where \"WHERE ...\"] [--order \"ORDER BY "
           "...\"]\n"
           "             [--filter VARIABLE COMPARISON TEXT [And|Or VARIABLE COMPARISON TEXT]]\n"
           "             [--sort VARIABLE Ascending|Descending]... [--show-clause]\n"
           "             [--first N] [--skip-recorded]\n"
           "                         add the rows of TempSource to a compilation; tracks\n"
           "                         already recorded are listed (and skipped on request).\n"
           "                         --filter and --sort (up to three) take the captions of\n"
           "                         the filter and sort dialogs; they replace --where and\n"
           "                         --order and cannot be combined with them. Without\n"
           "                         --order or --sort the rows come in the default order.\n"
           "                         --show-clause prints the WHERE and ORDER BY clauses\n"
           "                         and adds nothing\n"
           "  remove-track DB NAME TRACKNO\n"
           "                         remove a track and number the rest without a gap\n"
           "  tracks DB NAME         list a compilation's tracks and whether they fit;\n"
           "                         how they fit an MD's modes, a cassette's sides or\n"
           "                         an audio CD as it is recorded\n"
           "  move-track DB NAME FROM TO\n"
           "                         give track FROM the number TO; the tracks between\n"
           "                         move up or down by one\n"
           "  renumber DB NAME [--sort VARIABLE Ascending|Descending]...\n"
           "                         number the tracks 1 to n by up to three sort keys\n"
           "                         (none: the default order)\n"
           "  renumber DB NAME --balance\n"
           "                         number a cassette's tracks so that its sides are as\n"
           "                         even as they can be, each side in its running order\n"
           "  report DB tracks-all OUT.pdf\n"
           "  report DB tracks NAME OUT.pdf\n"
           "  report DB protocol NAME OUT.pdf  [--paper a4|letter]\n"
           "                         write every track by performer, a compilation's\n"
           "                         track list or its recording protocol as PDF (paper\n"
           "                         of the locale unless given)\n"
           "  export DB NAME OUT.m3u8|OUT.xspf|OUT.cue [--absolute]\n"
           "                         write a compilation's tracks as a playlist or CUE\n"
           "                         sheet (paths relative to its folder unless\n"
           "                         --absolute); tracks without a music file are named\n"
           "                         and left out\n";
    out.flush();
}

// Reports and covers measure their texts in fonts and write PDF, which takes a GUI application;
// it runs offscreen unless the user chose a platform.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char* argv[]) {
    const QByteArray command = argc > 1 ? QByteArray(argv[1]) : QByteArray();
    if (command == "report" || command == "cover" || command == "calibration-page") {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        return std::make_unique<QGuiApplication>(argc, argv);
    }
    return std::make_unique<QCoreApplication>(argc, argv);
}

// "--music-cache DIR", anywhere: the folder for the music folders' scans, as
// MIXORAMA_MUSIC_CACHE names it.
void takeMusicCacheOption(QStringList& args) {
    const qsizetype at = args.indexOf(QStringLiteral("--music-cache"));
    if (at >= 0 && at + 1 < args.size()) {
        qputenv("MIXORAMA_MUSIC_CACHE", QFile::encodeName(args[at + 1]));
        args.remove(at, 2);
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    const std::unique_ptr<QCoreApplication> app = makeApplication(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    accessfile::installAccessReader();
    engine::removeScratchFilesOfEndedRuns();  // left by a run that was killed
    QStringList args = app->arguments().mid(1);
    takeMusicCacheOption(args);
    if (args.isEmpty() || args[0] == QLatin1String("--help") || args[0] == QLatin1String("-h")) {
        printHelp(out);
        return args.isEmpty() ? 2 : 0;
    }
    const auto command = commands().find(args.takeFirst());
    if (command == commands().end()) {
        printHelp(err);
        return 2;
    }
    return command->second(args, cli::Streams{out, err});
}
