#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "engine/database.h"

namespace engine {

class FileUse;

// The default workspace: opens databases and works on database files.
class Workspace {
  public:
    static Workspace& defaultWorkspace();

    // Opens a database file; a file the engine reads only through the foreign table reader (an
    // Access file) opens read-only with its table names. Throws JetError; 3051 when a file to
    // be written still declares the text order of earlier versions (text_collation_layout.h).
    Database openDatabase(const QString& path, bool readOnly = false);
    // Closes every database opened through this workspace.
    void close();

    // Takes the file for this process alone, as repairing and compacting it in place needs: until
    // the use is dropped no other process opens it, and connections of this one share the use.
    // Throws JetError 3027 when it or its folder is read-only and 3045 naming the file when
    // another process, or this one, has it open; both leave the file as it was.
    static std::shared_ptr<FileUse> useExclusively(const QString& path);
    // Writes a compacted copy of source to destination. Fails with 3204 when the destination
    // exists, which is never overwritten (its description says what it is when it is no regular
    // file); a failed copy (3051 when the destination cannot be
    // created, 3043 when the disk is full) names the destination and leaves none behind.
    static void compactDatabase(const QString& source, const QString& destination);
    // Rebuilds the file's indexes and checks it. Throws JetError when the file is no database or
    // cannot be made whole, and 3027 before touching it when it or its folder is read-only.
    static void repairDatabase(const QString& path);

  private:
    std::vector<Database> opened_;
};

}  // namespace engine
