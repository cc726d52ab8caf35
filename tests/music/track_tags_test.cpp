#include <gtest/gtest.h>

#include "music/file_name_tags.h"
#include "music/track_tags.h"
#include "music_files.h"
#include "support/temp_dir.h"

namespace {

using music::TrackTags;

QString summary(const TrackTags& t) {
    QStringList texts{t.title,           t.artist, t.albumArtist, t.artistSort,
                      t.albumArtistSort, t.album,  t.version};
    for (int number : {t.year, t.disc, t.track})
        texts << QString::number(number);
    texts << t.rating << (t.live ? "live" : "studio") << QString::number(t.seconds);
    return texts.join('|');
}

TEST(TrackTags, EveryFormatReadsItsTagsAndLength) {
    const QString tags =
        "TITLE=Don't \"Stop\"; Ünï|ARTIST=Mötley|ALBUMARTIST=Crüe|ALBUM=Live at Leeds|DATE=1999|"
        "TRACKNUMBER=3|DISCNUMBER=2/2|ARTISTSORT=Motley|SUBTITLE=Remix";
    for (const QString format :
         {"flac", "mp3", "ogg", "opus", "m4a", "wma", "wav", "aiff", "ape", "wv"}) {
        testsupport::TempDir dir;
        const QString file = musictest::addFile(dir.path(), "t." + format, tags);
        QFile::setPermissions(file, QFile::ReadOwner);  // a read-only file is read as well
        const std::optional<TrackTags> read = music::readTags(file);
        ASSERT_TRUE(read) << format.toStdString();
        EXPECT_EQ(summary(*read), QString("Don't \"Stop\"; Ünï|Mötley|Crüe|Motley|Crüe|Live at "
                                          "Leeds|Remix|1999|2|3||live|%1")
                                      .arg(format == "wav" ? 1 : 0))  // 0.6 s, the others 0.2 s
            << format.toStdString();
    }
}

TEST(TrackTags, DamagedAndMissingFilesReadAsNothing) {
    testsupport::TempDir dir;
    const QByteArray noise = QByteArray("not audio at all ").repeated(40);
    for (const QString name : {"noise.flac", "noise.mp3", "noise.m4a", "empty.ogg", "gone.wv"}) {
        if (QFile file(dir.file(name)); !name.startsWith("gone") && file.open(QIODevice::WriteOnly))
            file.write(name.startsWith("empty") ? QByteArray() : noise);  // closed here
        EXPECT_FALSE(music::readTags(dir.file(name))) << name.toStdString();
    }
}

TEST(TrackTags, RatingsAndLiveTitles) {
    const QStringList ratings{
        "3=Good",        "5=Excellent",   "60=Good", "0.2=Poor", "1.0=Excellent",
        "196=Very Good", "255=Excellent", "0=",      "x="};
    for (const QString& rating : ratings)
        EXPECT_EQ(music::ratingText(rating.section('=', 0, 0)), rating.section('=', 1));
    const std::vector<std::pair<QString, bool>> titles{
        {"Live at Leeds", true}, {"Rust (LIVE)", true}, {"Alive", false}, {"Delivery", false}};
    for (const auto& [title, live] : titles)
        EXPECT_EQ(music::isLiveAlbumTitle(title), live) << title.toStdString();
}

TEST(FileNameTags, NamesFromThePath) {
    // path | title, artist, album artist, album, track (as summary() puts them)
    const std::vector<std::pair<QString, QString>> cases{
        {"Art/Alb/07 - Band - Song.mp3", "Song|Band|Band|Band|Band|Alb||0|0|7"},
        {"Art/Alb/07 Song Title.mp3", "Song Title|Art|Art|Art|Art|Alb||0|0|7"},
        {"Art/Alb/7 - Song.mp3", "Song|Art|Art|Art|Art|Alb||0|0|7"},
        {"Alb/Just a Name.mp3", "Just a Name|Alb|Alb|Alb|Alb|Alb||0|0|0"},
        {"loose.mp3", "loose|Root|Root|Root|Root|Root||0|0|0"},
        {"A/B/Live/2001 - Odyssey.flac", "2001 - Odyssey|B|B|B|B|Live||0|0|0"}};
    for (const auto& [path, expected] : cases) {
        TrackTags tags;
        music::fillFromPath(tags, path, "Root");
        EXPECT_EQ(summary(tags).section('|', 0, 9), expected) << path.toStdString();
    }
    TrackTags tagged;
    tagged.title = "T", tagged.artist = "A", tagged.album = "B", tagged.track = 2;
    music::fillFromPath(tagged, "X/Y/09 - Z - W.mp3", "Root");  // only what is missing
    EXPECT_EQ(summary(tagged).section('|', 0, 9), "T|A|A|A|A|B||0|0|2");
}

}  // namespace
