#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <functional>

// Compilation databases of the program's earlier versions are Access files. They are never
// opened in place: their rows are copied into a new database in today's format, and the Access
// file itself is only ever read.
namespace shell {

// What a conversion copied.
struct ConversionCounts {
    qint64 compilations = 0;
    qint64 tracks = 0;
    qint64 tracksLeftOut = 0;  // tracks whose compilation is not in the file
    // Where the old file broke the invariants (sums, track numbers 1 to n) the copy was
    // corrected: one line per correction, naming the compilation.
    QStringList corrections;
    QStringList notes;  // further lines for the user about the copy, in order
};

struct ConversionOptions {
    // A damaged file whose tables cannot all be read whole is still copied, as far as it reads;
    // notes then name what is missing.
    bool keepPartial = false;
};

// Status texts while a conversion runs: kConvertingText, then with the counts found.
using ConversionProgress = std::function<void(const QString&)>;
inline const QString kConvertingText = QStringLiteral("Converting database ...");

// True when the engine reads the file only through its foreign table reader (an Access file)
// and the file holds the five tables of a compilation database. Throws JetError when such a
// file cannot be read.
bool isAccessCompilationDatabase(const QString& path);

// The name proposed for the copy: the file's folder and base name followed by "-converted.mdb".
QString convertedCopyPath(const QString& accessPath);

// Copies the five tables of the Access file into a new compilation database at destination:
// every row with its ids, the old value lists in place of the template's. The copy is built in
// a temporary file beside the destination and renamed to it only when it is complete and whole.
// Throws JetError: 3204 when the destination exists (it is never overwritten), 3049 when a
// table of a damaged file cannot be read whole (unless options.keepPartial), the reader's error
// for a file damaged beyond reading, the engine's for rows the new database refuses. After a
// failure neither the destination nor a temporary file exists.
ConversionCounts convertAccessDatabase(const QString& accessPath, const QString& destination,
                                       const ConversionProgress& progress = {},
                                       const ConversionOptions& options = {});

}  // namespace shell
