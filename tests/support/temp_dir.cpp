#include "support/temp_dir.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace testsupport {

QString TempDir::tempBase() {
    const QFileInfo shm(QStringLiteral("/dev/shm"));
    const QString base = shm.isDir() && shm.isWritable() ? shm.filePath() : QDir::tempPath();
    return base + QStringLiteral("/mixorama-test-XXXXXX");
}

QByteArray fileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace testsupport
