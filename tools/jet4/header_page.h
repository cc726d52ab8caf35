#pragma once

#include <QByteArray>

#include "jet4/jet4.h"

namespace jet4 {

// Page 0: signature, engine version and the database settings (code page, encryption key,
// sort order; Jet 4 also the creation date), the settings region scrambled with RC4 as Jet
// expects.
QByteArray headerPage(Format format, double createdJetDate);

// RC4 keystream applied in place; applying it twice restores the input.
void rc4Apply(const QByteArray& key, char* data, int length);

}  // namespace jet4
