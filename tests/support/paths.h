#pragma once

#include <QString>

// Where the build put the programs and where the sources are. Kept out of the compile flags of
// every test file, so that builds of the tree in other folders share compiled objects.
namespace testsupport {

// A file of the program folder of the build (mixorama-cli, mixorama-mdbread, make-albums ...).
QString programPath(const QString& name);
// A file of the source tree, by its path inside it.
QString sourcePath(const QString& relative);

}  // namespace testsupport
