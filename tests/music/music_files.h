#pragma once

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <fileref.h>
#include <tpropertymap.h>

#include "support/paths.h"

// Failures show texts as texts.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace musictest {

// Copies the sample of the path's format to root/relativePath and tags it through TagLib with
// TagLib's property names: "TITLE=Song|ARTIST=Band".
inline QString addFile(const QString& root, const QString& relativePath, const QString& tags = {}) {
    const QString file = root + '/' + relativePath;
    QDir().mkpath(QFileInfo(file).path());
    QFile::copy(
        testsupport::sourcePath("tests/data/audio/sample." + QFileInfo(file).suffix().toLower()),
        file);
    if (!tags.isEmpty()) {
        TagLib::FileRef ref(QFile::encodeName(file).constData());
        TagLib::PropertyMap map;
        for (const QString& tag : tags.split('|'))
            map.insert(tag.section('=', 0, 0).toStdString(),
                       TagLib::String(tag.section('=', 1).toStdString(), TagLib::String::UTF8));
        ref.file()->setProperties(map);
        ref.save();
    }
    return file;
}

// A checksum of every file under root, hidden ones too, with their names.
inline QByteArray treeChecksum(const QString& root) {
    QCryptographicHash hash(QCryptographicHash::Sha1);
    QDirIterator files(root, QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        hash.addData(file.fileName().toUtf8());
        if (file.open(QIODevice::ReadOnly))
            hash.addData(file.readAll());
    }
    return hash.result();
}

}  // namespace musictest
