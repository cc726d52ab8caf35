#pragma once

#include <QFile>
#include <QString>

// A shell script standing in for the reading program, to drive the ways a program can end.
inline QString writeFakeProgram(const QString& path, const QByteArray& body) {
    QFile script(path);
    script.open(QIODevice::WriteOnly);
    script.write("#!/bin/sh\n" + body + "\n");
    script.close();
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}
