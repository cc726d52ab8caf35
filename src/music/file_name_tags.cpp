#include "music/file_name_tags.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace music {

namespace {

// "07 - Artist - Title", "07 - Title" and "07 Title": the number, then the rest.
void splitFileName(const QString& name, TrackTags& tags) {
    static const QRegularExpression numbered(QStringLiteral("^(\\d{1,3})(?:\\s*-\\s*|\\s+)(.+)$"));
    const QRegularExpressionMatch match = numbered.match(name);
    if (!match.hasMatch()) {
        tags.title = name;
        return;
    }
    tags.track = match.captured(1).toInt();
    const QString rest = match.captured(2).trimmed();
    const qsizetype dash = rest.indexOf(QLatin1String(" - "));
    if (dash > 0) {
        tags.artist = rest.left(dash).trimmed();
        tags.title = rest.mid(dash + 3).trimmed();
    } else {
        tags.title = rest;
    }
}

}  // namespace

QString albumFolder(const QString& relativePath, const QString& rootName) {
    const qsizetype slash = relativePath.lastIndexOf('/');
    return slash < 0 ? rootName : relativePath.left(slash);
}

TrackTags fileNameTags(const QString& relativePath, const QString& rootName) {
    TrackTags tags;
    splitFileName(QFileInfo(relativePath).completeBaseName().trimmed(), tags);
    const QStringList folders = albumFolder(relativePath, rootName).split('/');
    tags.album = folders.last();
    if (tags.artist.isEmpty())
        tags.artist = folders.size() > 1 ? folders[folders.size() - 2] : folders.last();
    return tags;
}

void fillFromPath(TrackTags& tags, const QString& relativePath, const QString& rootName) {
    if (tags.title.isEmpty() || tags.artist.isEmpty() || tags.album.isEmpty()) {
        const TrackTags named = fileNameTags(relativePath, rootName);
        if (tags.title.isEmpty()) {
            tags.title = named.title;
            tags.track = tags.track != 0 ? tags.track : named.track;
        }
        if (tags.artist.isEmpty())
            tags.artist = named.artist;
        if (tags.album.isEmpty())
            tags.album = named.album;
    }
    applyFallbacks(tags);
}

}  // namespace music
