#pragma once

#include <QByteArray>
#include <QString>

namespace accessfile {

// True when the bytes begin as an Access (Jet 3, Jet 4 or ACE) file does.
bool hasJetHeader(const QByteArray& start);
// Reads the start of the file, read-only; false when it cannot be read.
bool fileHasJetHeader(const QString& file);

}  // namespace accessfile
