#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace music {

// What the album tables need of one audio file. Empty texts and zero numbers are unknown.
struct TrackTags {
    QString title;
    QString artist;
    QString albumArtist;
    QString artistSort;
    QString albumArtistSort;
    QString album;
    QString version;
    int year = 0;
    int disc = 0;
    int track = 0;
    QString rating;  // one of ratingTexts(), empty when unrated
    bool live = false;
    int seconds = 0;
};

// The rating texts from the lowest to the highest; TrackRatingID is the position plus one.
const QStringList& ratingTexts();

// The rating text of a stored rating: stars (1 to 5), a percentage (up to 100), ID3's
// popularimeter (up to 255), or FMPS's fraction (0 to 1, when it has a point). Empty for none.
QString ratingText(const QString& stored);

// True for an album title holding "live" as a word, in any case: "Live at Leeds", "(Live)".
bool isLiveAlbumTitle(const QString& album);

// Fills the album artist from the artist and the sort forms from their names, where missing.
void applyFallbacks(TrackTags& tags);

// The tags and length (whole seconds, rounded) of an audio file, opened read-only. Fallbacks
// applied. nullopt when the file cannot be opened or has no audio (damaged).
std::optional<TrackTags> readTags(const QString& file);

}  // namespace music
