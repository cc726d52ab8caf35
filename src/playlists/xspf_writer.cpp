#include "playlists/xspf_writer.h"

#include <QUrl>
#include <QXmlStreamWriter>

#include "playlists/playlist_text.h"

namespace playlists {

namespace {

// Empty texts are left out: XSPF makes every element of a track optional.
void writeText(QXmlStreamWriter& xml, const QString& element, const QString& text) {
    if (!text.isEmpty()) {
        xml.writeTextElement(element, singleLine(text));
    }
}

void writeTrack(QXmlStreamWriter& xml, const PlaylistTrack& track) {
    xml.writeStartElement(QStringLiteral("track"));
    xml.writeTextElement(QStringLiteral("location"),
                         QString::fromLatin1(QUrl::fromLocalFile(track.file).toEncoded()));
    writeText(xml, QStringLiteral("title"), track.title);
    writeText(xml, QStringLiteral("creator"), track.performer);
    writeText(xml, QStringLiteral("album"), track.album);
    if (track.number > 0) {
        xml.writeTextElement(QStringLiteral("trackNum"), QString::number(track.number));
    }
    xml.writeTextElement(QStringLiteral("duration"), QString::number(qint64(track.seconds) * 1000));
    xml.writeEndElement();
}

}  // namespace

QByteArray xspfBytes(const Playlist& playlist) {
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("playlist"));
    xml.writeDefaultNamespace(QStringLiteral("http://xspf.org/ns/0/"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1"));
    writeText(xml, QStringLiteral("title"), playlist.name);
    writeText(xml, QStringLiteral("creator"), playlist.performer);
    xml.writeStartElement(QStringLiteral("trackList"));
    for (const PlaylistTrack& track : playlist.tracks) {
        writeTrack(xml, track);
    }
    xml.writeEndDocument();
    return bytes;
}

}  // namespace playlists
