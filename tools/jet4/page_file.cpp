#include "jet4/page_file.h"

#include <stdexcept>

namespace jet4 {
namespace {

[[noreturn]] void fail(const QFile& file, const char* what) {
    throw std::runtime_error(std::string(what) + " " + file.fileName().toStdString() + ": " +
                             file.errorString().toStdString());
}

}  // namespace

PageFile::PageFile(const QString& path, int pageSize) : file_(path), pageSize_(pageSize) {
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate))
        fail(file_, "cannot create");
}

void PageFile::write(std::uint32_t page, const QByteArray& bytes) {
    if (page >= pageCount_ || bytes.size() != pageSize_)
        throw std::logic_error("page written outside the allocated range");
    if (!file_.seek(qint64(page) * pageSize_) || file_.write(bytes) != bytes.size())
        fail(file_, "cannot write");
}

void PageFile::finish() {
    if (!file_.resize(qint64(pageCount_) * pageSize_) || !file_.flush())
        fail(file_, "cannot complete");
    file_.close();
}

}  // namespace jet4
