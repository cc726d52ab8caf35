#include "support/list_samples.h"

#include "support/databases.h"

namespace testsupport {

namespace {

const char* const kTrackColumns =
    "INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name, Track_Title, "
    "Album_Title, Album_Artist_Name, Length, RecordedStart, Live, Item, \"Index\", ArtistSort, "
    "AlbumArtistSort, AlbumLocation) VALUES ";

}  // namespace

void fillListSamples(const QString& path) {
    execRaw(path,
            "INSERT INTO Compilation (CompilationID_P, Name, SumTrack, SumTime, Manufacturer, "
            "Format, C_Length, Box, RecDate) VALUES "
            "(1, 'Road Trip', 3, 322, 'Sony', 'MD', 74, 'Shelf A', '2001-05-12 00:00:00'), "
            "(2, 'Autumn', 2, 3600, NULL, 'CD-ROM', 80, 'B2', NULL), "
            "(3, 'Empty One', 0, 0, NULL, 'MD', 74, NULL, NULL)");
    execRaw(path, QString(kTrackColumns) +
                      "(1, 1, 'Miles Davis', 'So What', 'Kind of Blue', 'Miles Davis', 59, 1959, "
                      "0, 1, 1, 'Davis, Miles', 'Davis, Miles', 'Jazz shelf'), "
                      "(1, 2, 'The Beatles', 'Help!', 'Help!', 'The Beatles', 138, NULL, -1, 1, "
                      "2, 'Beatles, The', 'Beatles, The', 'Pop shelf'), "
                      "(1, 3, 'The Beatles', 'Yesterday', 'Help!', 'The Beatles', 125, 1965, 0, "
                      "1, 13, 'Beatles, The', 'Beatles, The', 'Attic box'), "
                      "(2, 1, 'Miles Davis', 'So What', 'Kind of Blue', 'Miles Davis', 3000, "
                      "1959, 0, 1, 1, 'Davis, Miles', 'Davis, Miles', 'Jazz shelf'), "
                      "(2, 2, 'Nina Simone', 'Feeling Good', 'I Put a Spell on You', "
                      "'Nina Simone', 600, NULL, 0, 1, 7, 'Simone, Nina', 'Simone, Nina', "
                      "'Jazz shelf')");
}

void fillLongCompilation(const QString& path, qint64 id, const QString& name, int count,
                         int perPerformer) {
    execRaw(path, QStringLiteral("INSERT INTO Compilation (CompilationID_P, Name, SumTrack, "
                                 "SumTime, Format, C_Length) VALUES (%1, '%2', %3, %4, 'MD', 74)")
                      .arg(id)
                      .arg(name)
                      .arg(count)
                      .arg(count * 200));
    QString values;
    for (int i = 0; i < count; ++i) {
        const QString performer =
            QStringLiteral("Performer %1").arg(i / perPerformer, 5, 10, QChar('0'));
        values += QStringLiteral(
                      "%1(%2, %3, '%4', 'Track %5', 'Album %6', '%4', 200, 1990, 0, 1, "
                      "%7, '%4', '%4', 'Shelf %8')")
                      .arg(i == 0 ? "" : ", ")
                      .arg(id)
                      .arg(i + 1)
                      .arg(performer)
                      .arg(i + 1, 5, 10, QChar('0'))
                      .arg(i / 5, 5, 10, QChar('0'))
                      .arg(i % 5 + 1)
                      .arg(i / 100);
    }
    execRaw(path, QString(kTrackColumns) + values);
}

}  // namespace testsupport
