#pragma once

#include <QString>

namespace bench {

struct PipelineRun {
    double seconds = 0;
    double exportSeconds = 0;  // mdb-export alone
    qint64 rows = 0;           // the source rows the script counted
};

// What a user with mdbtools and the sqlite3 shell would script: every album table exported to
// CSV, the files imported into a new SQLite database, then the source table made with the same
// join, order and year/version pass. Throws std::runtime_error when a step fails.
PipelineRun runPipeline(const QString& albumFile, bool withRating);

}  // namespace bench
