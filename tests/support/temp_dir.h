#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace testsupport {

// A temporary folder removed with the test; file() names a file inside it.
class TempDir {
  public:
    QString path() const { return dir_.path(); }
    QString file(const QString& name) const { return dir_.filePath(name); }

  private:
    // Under /dev/shm when there is one: tests then wait for no disk.
    QTemporaryDir dir_{tempBase()};
    static QString tempBase();
};

// The bytes of a file; empty when it cannot be read.
QByteArray fileBytes(const QString& path);

}  // namespace testsupport
