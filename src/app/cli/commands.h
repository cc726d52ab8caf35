#pragma once

#include <QMap>
#include <QStringList>
#include <QTextStream>
#include <optional>

namespace engine {
class JetError;
}  // namespace engine

namespace cli {

struct Streams {
    QTextStream& out;
    QTextStream& err;
};

// Prints the usage line of a command; returns the exit code 2.
int usage(Streams streams, const QString& text);
// Prints an engine error with its number; returns the exit code 1.
int reportError(Streams streams, const engine::JetError& error);

// A command's arguments: "--name value" options, "--name" flags and the positional rest.
struct Arguments {
    QStringList positional;
    QMap<QString, QString> options;
    QStringList flags;
};

// Splits the arguments; nothing when an option lacks its value or is not one of the known
// options or flags.
std::optional<Arguments> splitArguments(const QStringList& args, const QStringList& options,
                                        const QStringList& flags = {});

// Each command takes the arguments after its name and returns the exit code.
int newDatabase(const QStringList& args, Streams streams);
int runSql(const QStringList& args, Streams streams);
int compact(const QStringList& args, Streams streams);
int check(const QStringList& args, Streams streams);
int convert(const QStringList& args, Streams streams);
int makeAlbums(const QStringList& args, Streams streams);
int tempSource(const QStringList& args, Streams streams);
int addCompilation(const QStringList& args, Streams streams);
int coverText(const QStringList& args, Streams streams);
int cover(const QStringList& args, Streams streams);
int calibrationPage(const QStringList& args, Streams streams);
int addTracks(const QStringList& args, Streams streams);
int removeTrack(const QStringList& args, Streams streams);
int tracks(const QStringList& args, Streams streams);
int moveTrack(const QStringList& args, Streams streams);
int renumber(const QStringList& args, Streams streams);
int writeListReport(const QStringList& args, Streams streams);
int exportPlaylist(const QStringList& args, Streams streams);

}  // namespace cli
