#pragma once

#include <QStringList>
#include <QTextStream>

namespace cli {

struct Streams {
    QTextStream& out;
    QTextStream& err;
};

// Each command takes the arguments after its name and returns the exit code.
int newDatabase(const QStringList& args, Streams streams);
int runSql(const QStringList& args, Streams streams);
int compact(const QStringList& args, Streams streams);
int convert(const QStringList& args, Streams streams);
int makeAlbums(const QStringList& args, Streams streams);
int tempSource(const QStringList& args, Streams streams);
int addCompilation(const QStringList& args, Streams streams);
int coverText(const QStringList& args, Streams streams);
int addTracks(const QStringList& args, Streams streams);
int removeTrack(const QStringList& args, Streams streams);
int tracks(const QStringList& args, Streams streams);
int moveTrack(const QStringList& args, Streams streams);
int renumber(const QStringList& args, Streams streams);

}  // namespace cli
