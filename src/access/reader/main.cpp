// mixorama-mdbread: reads an Access file for Mixorama in a process of its own, so that a damaged
// file can only bring down this program.
//
//   mixorama-mdbread list FILE                     user table names, one a line
//   mixorama-mdbread copy FILE OUT.sqlite TABLE...  copies tables into an SQLite file
//
// Exit codes are those of access/reader_protocol.h.

#include <cstdio>
#include <cstring>

#include "access/reader/commands.h"
#include "access/reader/failure.h"

namespace {

using accessfile::protocol::ExitCode;

int usage() {
    std::fprintf(stderr,
                 "usage: %s list FILE\n"
                 "       %s copy FILE OUT.sqlite TABLE...\n",
                 accessfile::protocol::kProgramName, accessfile::protocol::kProgramName);
    return ExitCode::kUsage;
}

int run(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], accessfile::protocol::kListCommand) == 0) {
        mdbread::listTables(argv[2]);
        return ExitCode::kOk;
    }
    if (argc >= 5 && std::strcmp(argv[1], accessfile::protocol::kCopyCommand) == 0) {
        QStringList tables;
        for (int i = 4; i < argc; ++i)
            tables << QString::fromUtf8(argv[i]);
        mdbread::copyTables(argv[2], argv[3], tables);
        return ExitCode::kOk;
    }
    return usage();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const mdbread::Failure& failure) {
        std::fprintf(stderr, "%s: %s\n", accessfile::protocol::kProgramName, failure.what());
        return failure.code();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", accessfile::protocol::kProgramName, error.what());
        return ExitCode::kNotADatabase;
    }
}
