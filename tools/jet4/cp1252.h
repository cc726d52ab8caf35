#pragma once

#include <QByteArray>
#include <QString>

namespace jet4 {

// Text in the Windows code page 1252, one byte a character, as Jet 3 stores it. Throws
// std::runtime_error for a character the code page does not have.
QByteArray toCp1252(const QString& text);

}  // namespace jet4
