#include "albumgen/albumgen.h"
#include "albumgen/names.h"
#include "albumgen/random.h"

#include <stdexcept>

namespace albumgen {
namespace {

constexpr int kUnknownRatingId = 0;  // present in tracks, absent from TrackRating

class Generator {
  public:
    Generator(const Options& options) : random_(options.seed) {
        if (options.albums < 0)
            throw std::runtime_error("the number of albums cannot be negative");
        c_.withRating = options.withRating;
        c_.artists = names::artists(random_, 24 + options.albums / 2);
        addNamed(c_.locations, names::locations());
        if (options.withRating)
            addNamed(c_.ratings, names::ratings());
    }

    Collection run(int albums) {
        for (int i = 0; i < albums; ++i)
            addAlbum();
        return std::move(c_);
    }

  private:
    static void addNamed(std::vector<Named>& to, const QStringList& names) {
        for (const QString& n : names)
            to.push_back({qint32(to.size() + 1), n});
    }

    const Artist& anyArtist() { return c_.artists[random_.below(int(c_.artists.size()))]; }

    // One performer mostly, now and then a second one.
    std::vector<const Artist*> performers(int secondPercent) {
        std::vector<const Artist*> out{&anyArtist()};
        if (random_.percent(secondPercent)) {
            const Artist* second = &anyArtist();
            if (second != out.front())
                out.push_back(second);
        }
        return out;
    }

    QString albumNotes() {
        const int kind = random_.below(1000);
        if (kind < 650)
            return {};
        if (kind < 960)
            return names::prose(random_, random_.between(20, 300));
        return names::prose(random_, random_.between(2500, 9000));  // liner notes
    }

    void addAlbum() {
        Album a;
        a.id = qint32(c_.albums.size() + 1);
        a.title = names::albumTitle(random_);
        const auto performers = this->performers(10);
        a.artistSort = performers.front()->sortName;
        if (!random_.percent(12))
            a.locationId = 1 + random_.below(int(c_.locations.size()));
        a.year = qint16(random_.between(1958, 2023));
        if (!random_.percent(5))
            a.label = random_.pick(names::labels());
        if (random_.percent(80))
            a.price = random_.between(599, 2999) / 100.0;
        a.discs = random_.percent(10) ? 2 : 1;
        a.purchased = QDate(a.year, 1, 1).addDays(random_.below(365 * (2024 - a.year)));
        a.notes = albumNotes();
        for (const Artist* p : performers)
            c_.artistAlbumLinks.push_back({p->id, a.id});
        const bool liveAlbum = random_.percent(6);
        const int trackCount = random_.between(8, 16);
        for (int n = 0; n < trackCount; ++n) {
            const int perDisc = (trackCount + a.discs - 1) / a.discs;
            addTrack(a, performers, liveAlbum, qint16(1 + n / perDisc), qint16(1 + n % perDisc));
        }
        c_.albums.push_back(std::move(a));
    }

    QString recordedStart(int albumYear) {
        if (random_.percent(12))
            return QString("");
        const int year = albumYear - random_.below(2);
        if (random_.percent(10))
            return QStringLiteral(" %1").arg(year);
        return " " + QDate(year, 1, 1).addDays(random_.below(365)).toString("yyyy-MM-dd");
    }

    std::optional<qint32> ratingId() {
        const int kind = random_.below(100);
        if (kind < 8)
            return std::nullopt;
        if (kind < 12)
            return kUnknownRatingId;
        return 1 + random_.below(5);
    }

    QString trackComment() {
        const int kind = random_.below(1000);
        if (kind < 850)
            return {};
        if (kind < 975)
            return names::prose(random_, random_.between(10, 120));
        if (kind < 995)
            return names::prose(random_, random_.between(500, 1800));
        return names::prose(random_, random_.between(3000, 8000));
    }

    void addTrack(const Album& a, std::vector<const Artist*> performers, bool liveAlbum,
                  qint16 item, qint16 index) {
        Track t;
        t.id = qint32(c_.tracks.size() + 1);
        t.albumId = a.id;
        if (random_.percent(12)) {  // a guest appears on this track
            const Artist* guest = &anyArtist();
            if (guest != performers.front())
                performers.push_back(guest);
        }
        t.artistSort = performers.front()->sortName;
        t.title = names::trackTitle(random_);
        t.item = item;
        t.index = index;
        t.length = random_.percent(3) ? random_.between(900, 2400) : random_.between(95, 540);
        t.version = liveAlbum             ? "Live"
                    : random_.percent(78) ? QString("")
                                          : random_.pick(names::versions());
        t.live = liveAlbum || t.version == "Live" || random_.percent(2);
        t.recordedStart = recordedStart(a.year);
        t.ratingId = ratingId();
        if (random_.percent(55))
            t.composer = names::person(random_);
        if (!random_.percent(5))
            t.genre = random_.pick(names::genres());
        t.comment = trackComment();
        if (random_.percent(40))
            t.bpm = quint8(random_.between(60, 200));
        t.added =
            QDateTime(a.purchased, QTime(random_.below(24), random_.below(60), random_.below(60)));
        for (const Artist* p : performers)
            c_.artistTrackLinks.push_back({p->id, t.id});
        c_.tracks.push_back(std::move(t));
    }

    Random random_;
    Collection c_;
};

}  // namespace

Collection generate(const Options& options) {
    return Generator(options).run(options.albums);
}

}  // namespace albumgen
