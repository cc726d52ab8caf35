#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <cstdint>

namespace jet4 {

// The output file as a sequence of pages. Pages are numbered when allocated and may be
// written in any order; a page allocated but never written reads as zeros.
class PageFile {
  public:
    PageFile(const QString& path, int pageSize);

    std::uint32_t allocate() { return pageCount_++; }
    std::uint32_t pageCount() const { return pageCount_; }
    void write(std::uint32_t page, const QByteArray& bytes);
    // Extends the file to its full page count and closes it.
    void finish();

  private:
    QFile file_;
    int pageSize_;
    std::uint32_t pageCount_ = 0;
};

}  // namespace jet4
