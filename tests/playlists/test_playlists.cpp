#include <gmock/gmock.h>
#include <libcue.h>
#include <sys/stat.h>

#include <QDir>
#include <QRegularExpression>
#include <QUrl>
#include <QXmlStreamReader>

#include "playlists/playlist_writer.h"
#include "support/document_summary.h"  // failures show texts as text
#include "support/temp_dir.h"

using namespace playlists;
using testsupport::fileBytes;
// A reader's lines: "name|performer", then "file|performer|title|album|number|seconds" per track.
using Rows = QStringList;

namespace {

// A track, its path resolved as a player resolves it: a file URI, or a path from the list's folder.
QString row(const QString& path, const QString& folder, const QString& performer,
            const QString& title, const QString& album = {}, int number = -1, int time = -1) {
    const QString file = path.startsWith("file:") ? QUrl(path).toLocalFile()
                                                  : QDir::cleanPath(QDir(folder).filePath(path));
    return QString("%1|%2|%3|%4|%5|%6")
        .arg(file, performer, title, album, QString::number(number), QString::number(time));
}

Rows readM3u8(const QByteArray& bytes, const QString& folder) {
    Rows rows{bytes.startsWith("#EXTM3U\n") ? "|" : "not first, or after a BOM: #EXTM3U"};
    const QRegularExpression entry("#EXTINF:(-?\\d+),(.*) - (.*)\n(.*)\n");
    for (const QRegularExpressionMatch& m : entry.globalMatch(QString::fromUtf8(bytes))) {
        rows << row(m.captured(4), folder, m.captured(2), m.captured(3), {}, -1,
                    m.captured(1).toInt());
    }
    return rows;
}

Rows readXspf(const QByteArray& bytes, const QString& folder) {
    QXmlStreamReader xml(bytes);
    EXPECT_TRUE(xml.readNextStartElement() && xml.name() == u"playlist");
    EXPECT_EQ(xml.attributes().value("version").toString(), "1");
    Rows rows;
    QMap<QString, QString> text;
    while (xml.readNext() != QXmlStreamReader::Invalid && !xml.atEnd()) {
        EXPECT_TRUE(!xml.isStartElement() || xml.namespaceUri() == u"http://xspf.org/ns/0/");
        if (xml.isStartElement() && xml.name() == u"trackList") {
            rows << text.take("title") + u'|' + text.take("creator");
        } else if (xml.isStartElement() && xml.name() != u"track") {
            text[xml.name().toString()] = xml.readElementText();
        } else if (xml.isEndElement() && xml.name() == u"track") {
            rows << row(text["location"], folder, text["creator"], text["title"], text["album"],
                        text["trackNum"].toInt(), text["duration"].toInt());
            text.clear();
        }
    }
    return rows;
}

Rows readCue(const QByteArray& bytes, const QString& folder) {
    const std::unique_ptr<Cd, void (*)(Cd*)> cd(cue_parse_string(bytes.constData()), cd_delete);
    const auto text = [](Cdtext* t, Pti pti) { return QString::fromUtf8(cdtext_get(pti, t)); };
    Cdtext* disc = cd ? cd_get_cdtext(cd.get()) : nullptr;
    Rows rows{disc ? text(disc, PTI_TITLE) + u'|' + text(disc, PTI_PERFORMER)
                   : "libcue refuses it"};
    for (int i = 1; cd && i <= cd_get_ntrack(cd.get()); ++i) {
        const Track* track = cd_get_track(cd.get(), i);
        EXPECT_EQ(track_get_index(track, 1), 0);
        rows << row(QString::fromUtf8(track_get_filename(track)), folder,
                    text(track_get_cdtext(track), PTI_PERFORMER),
                    text(track_get_cdtext(track), PTI_TITLE), {}, i);
    }
    return rows;
}

}  // namespace

// Each format, by extension, with relative and absolute paths (a sibling folder, the list's, spaces
// and Unicode) is read back whole by its own reader; tracks without a file are left out and named.
TEST(Playlists, EveryFormatReadsBackWhatWasWritten) {
    const QString names[] = {"music/1 Q & A.flac", "lists/2 Ça va.mp3", "Mÿ Mú/a b/3 <c>.AIFF"};
    const QString outNames[] = {"l.m3u8", "L.M3U", "l.xspf", "L.Xspf", "l.cue", "L.CUE"};
    const QString p[] = {"ABBA", "Ärzte & <Co>", QString(300, u'L')};
    const PlaylistTrack none{2, "Ä", "x\ny", "", 61, ""};
    const testsupport::TempDir dir;
    const QString lists = dir.file("lists");
    const QStringList f{dir.file(names[0]), dir.file(names[1]), dir.file(names[2])};
    QDir().mkpath(lists);
    const std::vector<PlaylistTrack> tracks{
        PlaylistTrack{1, p[0], "Waterloo", "Best", 230, f[0]}, none,
        PlaylistTrack{3, p[1], "Lied ✓", "Bestie", 245, f[1]},
        PlaylistTrack{7, p[2], "It's \"q\"\r\nline", "", 7, f[2]}, none};
    const auto t = [&](int i, const QString& rest) { return f[i] + u'|' + p[i] + u'|' + rest; };
    const Rows want[] = {
        {"|", t(0, "Waterloo||-1|230"), t(1, "Lied ✓||-1|245"), t(2, "It's \"q\"  line||-1|7")},
        {"Road & <Trip> \"26\"|", t(0, "Waterloo|Best|1|230000"), t(1, "Lied ✓|Bestie|3|245000"),
         t(2, "It's \"q\"  line||7|7000")},
        {"Road & <Trip> '26'|Various", t(0, "Waterloo||1|-1"), t(1, "Lied ✓||2|-1"),
         t(2, "It's 'q'  line||3|-1")}};
    for (int run = 0; run < 6; ++run) {
        const QString out = lists + "/" + outNames[run];
        SCOPED_TRACE(out.toStdString());
        ASSERT_EQ(formatForFile(out), PlaylistFormat(run / 2));
        EXPECT_EQ(leftOutMessage(writePlaylist({"Road & <Trip> \"26\"", "", tracks}, out,
                                               PlaylistFormat(run / 2), PathStyle(run % 2))),
                  "2 of 5 tracks have no file and were left out: 2 Ä - x y, 2 Ä - x y.");
        const QByteArray bytes = fileBytes(out);
        const auto read = std::array{readM3u8, readXspf, readCue}[size_t(run / 2)];
        EXPECT_EQ(read(bytes, lists), want[run / 2]);
        EXPECT_EQ(bytes.contains(dir.path().toUtf8()), run % 2 == 1 || run / 2 == 1);
        EXPECT_EQ(bytes.contains(names[2].toUtf8()), run / 2 != 1) << "XSPF percent-encodes";
        const QString sheet =
            "(?s)^REM TOTAL 8:02\n.*flac\" WAVE\n  TRACK 01 AUDIO\n.*mp3\" MP3\n.*AIFF\" AIFF\n";
        EXPECT_EQ(QRegularExpression(sheet).match(bytes).hasMatch(), run / 2 == 2);
        if (run < 4) {
            EXPECT_EQ(
                leftOutMessage(writePlaylist({"", "", {6, none}}, out, PlaylistFormat(run / 2))),
                "None of the tracks has a file, so the playlist is empty: 2 Ä - x y, 2 Ä - x y, 2 "
                "Ä - x y, 2 Ä - x y, 2 Ä - x y and 1 more.");
            EXPECT_EQ(read(fileBytes(out), lists), Rows{"|"});
        }
    }
    EXPECT_FALSE(formatForFile("list.m3u8.txt") || formatForFile("/m3u/cue"));
}

// A CD of more than 99 tracks or none, a file name the format cannot write, a folder or a pipe in
// the file's place, a read-only folder: an error that says why, and what was there stays.
TEST(Playlists, RefusalsLeaveWhatWasThere) {
    using enum QDir::Filter;
    const std::tuple<PlaylistFormat, int, QString, std::string> cases[] = {
        {PlaylistFormat::Cue, 100, "a.flac", "at most 99 tracks"},
        {PlaylistFormat::Cue, 0, "a.flac", "at least one track"},
        {PlaylistFormat::Cue, 1, "say \"hi\".flac", "double quote"},
        {PlaylistFormat::M3u8, 1, "a\nb.flac", "line break"},
        {PlaylistFormat::Xspf, 1, "folder", "it is a folder"},
        {PlaylistFormat::M3u8, 1, "pipe", "not a regular file"},
        {PlaylistFormat::Cue, 1, "read-only", "read-only"}};
    for (const auto& [format, count, file, says] : cases) {
        const testsupport::TempDir dir;
        const QString out = dir.file("list");
        QFile old(out);
        file == "folder" ? QDir().mkdir(out)
        : file == "pipe" ? mkfifo(QFile::encodeName(out), 0600) == 0
                         : old.open(QIODevice::WriteOnly) && old.write("old list") && old.flush();
        chmod(QFile::encodeName(dir.path()), file == "read-only" ? 0500 : 0700);
        const PlaylistTrack track{1, "P", "T", "", 1, dir.file(file)};
        const auto write = [&] { writePlaylist({"", "", {size_t(count), track}}, out, format); };
        EXPECT_THAT(write, testing::ThrowsMessage<ExportError>(testing::HasSubstr(says)));
        chmod(QFile::encodeName(dir.path()), 0700);
        EXPECT_EQ(QDir(dir.path()).entryList(AllEntries | System | NoDotAndDotDot),
                  QStringList{"list"});
        EXPECT_EQ(QFileInfo(out).isFile() ? fileBytes(out) : "old list", "old list");
    }
}
