#pragma once

#include "access/reader/libmdb.h"

#include <QString>
#include <QStringList>
#include <memory>

namespace mdbread {

struct TableDefDeleter {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using TableDefPtr = std::unique_ptr<MdbTableDef, TableDefDeleter>;

// An Access file opened read-only through libmdb, with text converted to UTF-8.
class MdbFile {
  public:
    // Throws Failure: kCannotOpen when the file cannot be read, kNotADatabase when libmdb does
    // not recognise it or it is cut short, kUsage when the Jet 3 character set named by the user
    // is unknown.
    explicit MdbFile(const char* path);
    ~MdbFile();
    MdbFile(const MdbFile&) = delete;
    MdbFile& operator=(const MdbFile&) = delete;

    MdbHandle* handle() const { return mdb_; }
    QStringList userTableNames() const;
    // The user table of that name, compared without regard to case; null when there is none.
    MdbCatalogEntry* findUserTable(const QString& name) const;
    // The table with its columns read; throws Failure(kNotADatabase) when its definition is
    // unreadable.
    TableDefPtr readTable(MdbCatalogEntry* entry) const;

  private:
    MdbHandle* mdb_ = nullptr;
};

}  // namespace mdbread
