#include "access/reader/mdb_file.h"

#include <sys/stat.h>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <QSet>

#include "access/reader/failure.h"

namespace mdbread {

using accessfile::protocol::ExitCode;

namespace {

// Large enough for a text column of a damaged row that claims a whole page, converted to UTF-8.
constexpr size_t kBindSize = 64 * 1024;
constexpr guint kMaxAccessColumns = 255;

// libmdb reads its character sets from the environment when a file is opened. Text always goes
// out as UTF-8; Jet 3 text is read as cp1252 unless the user names another code page.
void configureCharacterSets() {
    setenv("MDBICONV", "UTF-8", 1);
    const char* jet3 = getenv("MDB_JET3_CHARSET");
    if (jet3 == nullptr || *jet3 == '\0')
        setenv("MDB_JET3_CHARSET", "CP1252", 1);
}

// Without a converter libmdb would turn every character into '?'.
void requireTextConverter(MdbHandle* mdb) {
    if (mdb->iconv_in != reinterpret_cast<iconv_t>(-1))
        return;
    throw Failure(ExitCode::kUsage, std::string("unknown character set in MDB_JET3_CHARSET: ") +
                                        getenv("MDB_JET3_CHARSET"));
}

// An Access file is a whole number of pages; one cut short is damaged.
void requireWholePages(MdbHandle* mdb, const char* path) {
    struct stat info {};
    if (stat(path, &info) == 0 && info.st_size % mdb->fmt->pg_size == 0)
        return;
    throw Failure(ExitCode::kNotADatabase, std::string("file cut short: ") + path);
}

void requireReadable(const char* path) {
    FILE* probe = std::fopen(path, "rb");
    if (probe == nullptr)
        throw Failure(ExitCode::kCannotOpen,
                      std::string("cannot open ") + path + ": " + std::strerror(errno));
    std::fclose(probe);
}

// libmdb converts Jet 4 text as UCS-2, which turns characters outside the basic plane (stored
// as surrogate pairs) into '?'. UTF-16 reads them.
void readJet4TextAsUtf16(MdbHandle* mdb) {
    if (IS_JET3(mdb))
        return;
    const iconv_t utf16 = iconv_open("UTF-8", "UTF-16LE");
    if (utf16 == reinterpret_cast<iconv_t>(-1))
        return;
    if (mdb->iconv_in != reinterpret_cast<iconv_t>(-1))
        iconv_close(mdb->iconv_in);
    mdb->iconv_in = utf16;
}

bool isUserTable(MdbCatalogEntry* entry) {
    return entry != nullptr && entry->object_type == MDB_TABLE && mdb_is_user_table(entry);
}

// A damaged definition shows as no columns, too many, or names empty or repeated.
bool hasSoundColumns(MdbTableDef* table) {
    if (table->num_cols == 0 || table->num_cols > kMaxAccessColumns ||
        table->columns->len != table->num_cols)
        return false;
    QSet<QString> names;
    for (guint i = 0; i < table->num_cols; ++i) {
        auto* column = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i));
        const QString name = QString::fromUtf8(column->name).toCaseFolded();
        if (name.isEmpty() || names.contains(name))
            return false;
        names.insert(name);
    }
    return true;
}

}  // namespace

MdbFile::MdbFile(const char* path) {
    configureCharacterSets();
    requireReadable(path);
    std::unique_ptr<MdbHandle, decltype(&mdb_close)> mdb(mdb_open(path, MDB_NOFLAGS), &mdb_close);
    if (!mdb)
        throw Failure(ExitCode::kNotADatabase, std::string("not an Access database: ") + path);
    requireWholePages(mdb.get(), path);
    requireTextConverter(mdb.get());
    readJet4TextAsUtf16(mdb.get());
    mdb_set_bind_size(mdb.get(), kBindSize);
    mdb_set_boolean_fmt_numbers(mdb.get());
    // Every Access file lists at least its own catalogue table; an empty list means the
    // catalogue's pages could not be read.
    if (mdb_read_catalog(mdb.get(), MDB_TABLE) == nullptr || mdb.get()->catalog->len == 0)
        throw Failure(ExitCode::kNotADatabase, std::string("unreadable catalog in ") + path);
    mdb_ = mdb.release();
}

MdbFile::~MdbFile() {
    if (mdb_ != nullptr)
        mdb_close(mdb_);
}

QStringList MdbFile::userTableNames() const {
    QStringList names;
    for (guint i = 0; i < mdb_->catalog->len; ++i) {
        auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb_->catalog, i));
        if (isUserTable(entry))
            names << QString::fromUtf8(entry->object_name);
    }
    return names;
}

MdbCatalogEntry* MdbFile::findUserTable(const QString& name) const {
    for (guint i = 0; i < mdb_->catalog->len; ++i) {
        auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb_->catalog, i));
        if (isUserTable(entry) &&
            QString::fromUtf8(entry->object_name).compare(name, Qt::CaseInsensitive) == 0)
            return entry;
    }
    return nullptr;
}

TableDefPtr MdbFile::readTable(MdbCatalogEntry* entry) const {
    TableDefPtr table(mdb_read_table(entry));
    if (!table || mdb_read_columns(table.get()) == nullptr || !hasSoundColumns(table.get()))
        throw Failure(ExitCode::kNotADatabase,
                      std::string("unreadable definition of table ") + entry->object_name);
    return table;
}

}  // namespace mdbread
