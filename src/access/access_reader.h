#pragma once

#include <QString>
#include <QStringList>

#include "access/reader_process.h"
#include "engine/foreign_tables.h"

// The namespace is not called "access": POSIX declares a function of that name in <unistd.h>,
// which the standard library pulls into nearly every file.
namespace accessfile {

// Reads Access files for the engine by running the program mixorama-mdbread, so that a damaged
// file can crash or hang only that program. The Access file is only ever opened read-only.
class AccessTableReader : public engine::ForeignTableReader {
  public:
    // An empty program means the one readerProgramPath() finds.
    explicit AccessTableReader(QString program = {}, ProcessLimits limits = {});

    bool canRead(const QString& file) const override;
    QStringList tableNames(const QString& file) override;
    std::vector<engine::IncompleteTable> copyTables(const QString& file, const QStringList& tables,
                                                    const QString& sqliteOut) override;

  private:
    QByteArray run(const QString& file, const QStringList& arguments,
                   const QStringList& tables) const;

    QString program_;
    ProcessLimits limits_;
};

// The reading program: MIXORAMA_MDBREAD when set, else the one beside the running executable,
// else the one in the program folder MIXORAMA_HOME, else an installed one in
// ../libexec/mixorama beside the executable.
QString readerProgramPath();

// Makes the engine read Access files with AccessTableReader.
void installAccessReader();

}  // namespace accessfile
