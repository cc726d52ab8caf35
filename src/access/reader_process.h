#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <chrono>

namespace accessfile {

// How long the reading program may run: it is stopped when it writes nothing to its output for
// `silence`, or when it runs longer than `total` however busy it is.
struct ProcessLimits {
    std::chrono::milliseconds silence{std::chrono::seconds(60)};
    std::chrono::milliseconds total{std::chrono::minutes(10)};
};

struct ProcessOutcome {
    enum class End { Exited, Crashed, Stopped, NotStarted };
    End end = End::NotStarted;
    int exitCode = -1;
    QByteArray output;
    QByteArray errors;
};

// Runs the program to its end or to a limit, collecting what it writes.
ProcessOutcome runWithLimits(const QString& program, const QStringList& arguments,
                             const ProcessLimits& limits);

}  // namespace accessfile
