#include "music/track_tags.h"

#include <QFile>
#include <QRegularExpression>
#include <cmath>

#include <aifffile.h>
#include <fileref.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <popularimeterframe.h>
#include <tfilestream.h>
#include <tpropertymap.h>
#include <wavfile.h>

namespace music {

namespace {

QString text(const TagLib::String& value) {
    return QString::fromStdWString(value.toWString()).trimmed();
}

QString property(const TagLib::PropertyMap& map, const char* key) {
    const auto found = map.find(key);
    return found == map.end() || found->second.isEmpty() ? QString() : text(found->second.front());
}

QString firstProperty(const TagLib::PropertyMap& map, std::initializer_list<const char*> keys) {
    for (const char* key : keys) {
        if (QString value = property(map, key); !value.isEmpty())
            return value;
    }
    return {};
}

QString starsText(int stars) {
    return stars >= 1 && stars <= 5 ? ratingTexts()[stars - 1] : QString();
}

// Windows Media Player's steps of the popularimeter: 1, 64, 128, 196, 255.
int popularimeterStars(int value) {
    if (value <= 0)
        return 0;
    return value < 32 ? 1 : value < 96 ? 2 : value < 160 ? 3 : value < 224 ? 4 : 5;
}

const TagLib::ID3v2::Tag* id3v2Tag(TagLib::File* file) {
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file))
        return mpeg->hasID3v2Tag() ? mpeg->ID3v2Tag() : nullptr;
    if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(file))
        return wav->hasID3v2Tag() ? wav->ID3v2Tag() : nullptr;
    if (auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(file))
        return aiff->hasID3v2Tag() ? aiff->tag() : nullptr;
    return nullptr;
}

// ID3's rating frame, which TagLib leaves out of the property map.
QString popularimeterRating(TagLib::File* file) {
    const TagLib::ID3v2::Tag* tag = id3v2Tag(file);
    if (tag == nullptr)
        return {};
    const TagLib::ID3v2::FrameList frames = tag->frameList("POPM");
    if (frames.isEmpty())
        return {};
    const auto* frame = dynamic_cast<const TagLib::ID3v2::PopularimeterFrame*>(frames.front());
    return frame != nullptr ? starsText(popularimeterStars(frame->rating())) : QString();
}

bool isTrue(const QString& value) {
    static const QStringList yes{"1", "true", "yes", "y"};
    return yes.contains(value, Qt::CaseInsensitive);
}

void readProperties(TrackTags& tags, TagLib::File* file) {
    const TagLib::PropertyMap map = file->properties();
    tags.albumArtist = firstProperty(map, {"ALBUMARTIST", "ALBUM ARTIST"});
    tags.artistSort = property(map, "ARTISTSORT");
    tags.albumArtistSort = property(map, "ALBUMARTISTSORT");
    tags.version = firstProperty(map, {"SUBTITLE", "VERSION"});
    tags.disc = property(map, "DISCNUMBER").section('/', 0, 0).toInt();
    tags.rating = ratingText(firstProperty(map, {"RATING", "FMPS_RATING"}));
    if (tags.rating.isEmpty())
        tags.rating = popularimeterRating(file);
    tags.live = isTrue(property(map, "LIVE"));
}

}  // namespace

const QStringList& ratingTexts() {
    static const QStringList texts{"Poor", "Fair", "Good", "Very Good", "Excellent"};
    return texts;
}

QString ratingText(const QString& stored) {
    bool number = false;
    const double value = stored.trimmed().toDouble(&number);
    if (!number || value <= 0)
        return {};
    if (stored.contains('.') && value <= 1)
        return starsText(int(std::lround(value * 5)));
    if (value <= 5)
        return starsText(int(std::lround(value)));
    if (value <= 100)
        return starsText(std::max(1, int(std::lround(value / 20))));
    return starsText(popularimeterStars(int(value)));
}

bool isLiveAlbumTitle(const QString& album) {
    static const QRegularExpression live(QStringLiteral("\\blive\\b"),
                                         QRegularExpression::CaseInsensitiveOption);
    return live.match(album).hasMatch();
}

void applyFallbacks(TrackTags& tags) {
    if (tags.albumArtist.isEmpty())
        tags.albumArtist = tags.artist;
    if (tags.artistSort.isEmpty())
        tags.artistSort = tags.artist;
    if (tags.albumArtistSort.isEmpty())
        tags.albumArtistSort = tags.albumArtist;
    tags.live = tags.live || isLiveAlbumTitle(tags.album);
}

std::optional<TrackTags> readTags(const QString& file) {
    const QByteArray name = QFile::encodeName(file);
    TagLib::FileStream stream(name.constData(), true);  // read-only: nothing can be saved
    if (!stream.isOpen())
        return std::nullopt;
    const TagLib::FileRef ref(&stream, true, TagLib::AudioProperties::Average);
    // TagLib takes any bytes for MPEG; a file without a frame has neither rate nor channels.
    const TagLib::AudioProperties* audio = ref.isNull() ? nullptr : ref.audioProperties();
    if (audio == nullptr || audio->sampleRate() <= 0 || audio->channels() <= 0)
        return std::nullopt;
    TrackTags tags;
    if (const TagLib::Tag* tag = ref.tag()) {
        tags.title = text(tag->title());
        tags.artist = text(tag->artist());
        tags.album = text(tag->album());
        tags.year = int(tag->year());
        tags.track = int(tag->track());
    }
    readProperties(tags, ref.file());
    tags.seconds = (audio->lengthInMilliseconds() + 500) / 1000;
    applyFallbacks(tags);
    return tags;
}

}  // namespace music
