#pragma once

#include <QString>

namespace demo {

// Writes a demo album database (an Access file) and a compilation database made from the
// template, holding a few dozen compilations of different formats, most of them filled with
// tracks of that album database. Existing files are refused (std::runtime_error).
void writeDemo(const QString& compilationPath, const QString& albumPath);

// Only the compilation database, with compilationCount compilations (for large test sets).
void writeCompilations(const QString& compilationPath, int compilationCount, quint32 seed);

}  // namespace demo
