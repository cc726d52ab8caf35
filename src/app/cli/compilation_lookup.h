#pragma once

#include <QString>
#include <optional>

#include "assembly/track_picker.h"
#include "cli/commands.h"

namespace engine {
class Database;
}  // namespace engine

// What the compilation commands share: finding the compilation named on the command line and
// telling the user about track numbers it does not have.
namespace cli {

struct Compilation {
    qint64 id = 0;
    int lengthMinutes = 0;
    assembly::TrackSums stored;  // SumTrack and SumTime as the file holds them
    QString format;
};

// The compilation of that name (compared as the engine compares names); prints a message and
// gives nothing when there is none.
std::optional<Compilation> findCompilation(engine::Database& database, const QString& name,
                                           Streams streams);

// Prints that trackNo, as given on the command line, is no track of the compilation and which
// numbers are; returns the exit code 1.
int noSuchTrack(engine::Database& database, const Compilation& compilation, const QString& name,
                const QString& trackNo, Streams streams);

}  // namespace cli
