#pragma once

#include <QList>
#include <QString>

// One way for every test to seed compilations and their tracks: designated initialisers name
// only what a test cares about, the rest takes plain defaults.
namespace testsupport {

struct SampleTrack {
    QString performer = "Performer";
    QString title = "Title";
    int seconds = 180;
    QString album = "Album";
    QString albumPerformer{};  // the performer when empty
    int year = 0;              // NULL when 0
    bool live = false;
    int item = 1;
    int index = 1;
    QString performerSort{};       // NULL when empty
    QString albumPerformerSort{};  // NULL when empty
    QString location{};            // NULL when empty
    QString version{};             // NULL when empty
    QString rating{};              // NULL when empty
};

struct SampleCompilation {
    QString name{};
    QString format = "MD";
    int minutes = 74;
    QString manufacturer{};  // NULL when empty
    QString box{};           // NULL when empty
    QString recDate{};       // as stored (yyyy-mm-dd hh:mm:ss), NULL when empty
    QString notes{};         // NULL when empty
    QString coverMemo{};     // NULL when empty
    QList<SampleTrack> tracks{};
    qint64 id = 0;  // the next free id when 0
};

// Stores the compilation and its tracks (numbered 1..n after any it has, SumTrack and SumTime
// kept) in the file past the engine, in one transaction; returns the compilation's id.
qint64 addSample(const QString& path, const SampleCompilation& compilation);
// "TrackNo:Title ..." of a compilation's tracks in TrackNo order; its "SumTrack/SumTime".
QString trackList(const QString& path, qint64 compilationId);
QString storedSums(const QString& path, qint64 compilationId);
// The number of compilations of the file whose stored SumTrack or SumTime (Null lengths
// counting 0) disagree with their tracks, or whose tracks are not numbered 1 to SumTrack.
int brokenCompilations(const QString& path);

// An SQL literal of text: 'text' with quotes doubled, NULL when empty.
QString sqlText(const QString& text);

}  // namespace testsupport
