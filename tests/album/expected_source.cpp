#include "album/expected_source.h"

#include <QHash>
#include <algorithm>
#include <iterator>

#include "engine/jet_collation.h"

namespace albumtest {

namespace {

using Record = QHash<QString, QVariant>;  // column name -> value

// The rows of one table with an index on one of its columns.
class Table {
  public:
    Table() = default;
    explicit Table(const albumgen::TableRows& rows) {
        for (const QVariantList& values : rows.rows) {
            Record record;
            for (size_t c = 0; c < rows.columns.size(); ++c)
                record.insert(rows.columns[c].name, values.value(int(c)));
            records_.push_back(record);
        }
    }
    // The rows whose column equals key; a Null key matches nothing, as in a join.
    std::vector<Record> matching(const QString& column, const QVariant& key) const {
        std::vector<Record> out;
        if (key.isNull())
            return out;
        for (const Record& r : records_) {
            if (!r.value(column).isNull() && r.value(column).toLongLong() == key.toLongLong())
                out.push_back(r);
        }
        return out;
    }
    // A left join: the matching rows, or one empty record when none match.
    std::vector<Record> matchingOrNull(const QString& column, const QVariant& key) const {
        std::vector<Record> out = matching(column, key);
        if (out.empty())
            out.push_back(Record());
        return out;
    }
    const std::vector<Record>& records() const { return records_; }

  private:
    std::vector<Record> records_;
};

QVariant recordingYear(const QVariant& recordedStart) {
    const QString trimmed = recordedStart.toString().trimmed();
    if (trimmed.isEmpty())
        return QVariant();
    return trimmed.left(4).toInt();
}

QVariant nullIfEmpty(const QVariant& text) {
    return text.toString().isEmpty() ? QVariant() : text;
}

// The link rows naming the owner (a track or an album), each with the artist it names.
std::vector<std::pair<Record, Record>> performers(QHash<QString, Table>& byName,
                                                  const QString& linkTable, const QString& key,
                                                  const Record& owner) {
    std::vector<std::pair<Record, Record>> out;
    for (const Record& link : byName[linkTable].matching(key, owner[key]))
        for (const Record& artist : byName["Artist"].matching("ArtistID", link["ArtistID"]))
            out.emplace_back(link, artist);
    return out;
}

SourceRow sourceRow(const Record& track, const Record& link, const Record& performer,
                    const Record& album, const Record& albumPerformer, const Record& rating,
                    const Record& location) {
    const Record row{{"ArtistSort", track["ArtistSort"]},
                     {"PerformerTrack", performer["Name"]},
                     {"TitleTrack", track["Title"]},
                     {"Item", track["Item"]},
                     {"Index", track["Index"]},
                     {"Length", track["Length"]},
                     {"Version", nullIfEmpty(track["Version"])},
                     {"Live", track["Live"]},
                     {"RecordedStart", track["RecordedStart"]},
                     {"TitleAlbum", album["Title"]},
                     {"PerformerAlbum", albumPerformer["Name"]},
                     {"AlbumArtistSort", album["ArtistSort"]},
                     {"TrackTrackID", track["TrackID"]},
                     {"TrackAlbumID", track["AlbumID"]},
                     {"RatingTrack", rating["TrackRating"]},
                     {"Location", location["Location"]},
                     {"ArtistID", link["ArtistID"]},
                     {"TrackID", link["TrackID"]},
                     {"MyRecorded", recordingYear(track["RecordedStart"])}};
    SourceRow cells;
    for (const QString& column : sourceColumns())
        cells << cellText(column, row.value(column));
    return cells;
}

}  // namespace

const QStringList& sourceColumns() {
    static const QStringList columns{
        "ArtistSort",     "PerformerTrack",  "TitleTrack",   "Item",          "Index",
        "Length",         "Version",         "Live",         "RecordedStart", "TitleAlbum",
        "PerformerAlbum", "AlbumArtistSort", "TrackTrackID", "TrackAlbumID",  "RatingTrack",
        "Location",       "ArtistID",        "TrackID",      "MyRecorded"};
    return columns;
}

int columnIndex(const QString& name) {
    return int(sourceColumns().indexOf(name));
}

QString cellText(const QString& column, const QVariant& value) {
    if (value.isNull())
        return kNull;
    if (column == QLatin1String("Live"))
        return value.toBool() ? QStringLiteral("yes") : QStringLiteral("no");
    return value.toString();
}

std::vector<SourceRow> expectedSourceRows(const std::vector<albumgen::TableRows>& tables) {
    QHash<QString, Table> byName;
    for (const albumgen::TableRows& rows : tables)
        byName.insert(rows.name, Table(rows));
    std::vector<SourceRow> out;
    for (const Record& track : byName["Track"].records()) {
        const auto trackPerformers = performers(byName, "ArtistTrackLink", "TrackID", track);
        for (const Record& album : byName["Album"].matching("AlbumID", track["AlbumID"])) {
            const auto albumPerformers = performers(byName, "ArtistAlbumLink", "AlbumID", album);
            const auto ratings =
                byName["TrackRating"].matchingOrNull("TrackRatingID", track["TrackRatingID"]);
            const auto locations =
                byName["Location"].matchingOrNull("LocationID", album["LocationID"]);
            for (const auto& [link, performer] : trackPerformers)
                for (const auto& [albumLink, albumPerformer] : albumPerformers)
                    for (const Record& rating : ratings)
                        for (const Record& location : locations)
                            out.push_back(sourceRow(track, link, performer, album, albumPerformer,
                                                    rating, location));
        }
    }
    return out;
}

QString multisetDifference(std::vector<SourceRow> expected, std::vector<SourceRow> actual) {
    std::sort(expected.begin(), expected.end());
    std::sort(actual.begin(), actual.end());
    std::vector<SourceRow> missing, extra;
    std::set_difference(expected.begin(), expected.end(), actual.begin(), actual.end(),
                        std::back_inserter(missing));
    std::set_difference(actual.begin(), actual.end(), expected.begin(), expected.end(),
                        std::back_inserter(extra));
    QString report;
    const auto describe = [&](const char* what, const std::vector<SourceRow>& rows) {
        for (size_t i = 0; i < std::min<size_t>(rows.size(), 5); ++i)
            report += QStringLiteral("%1: %2\n").arg(what, rows[i].join(" | "));
        if (rows.size() > 5)
            report += QStringLiteral("... %1 %2 rows in all\n").arg(rows.size()).arg(what);
    };
    describe("missing", missing);
    describe("unexpected", extra);
    return report;
}

bool inSourceOrder(const SourceRow& a, const SourceRow& b) {
    for (const char* column : {"ArtistSort", "AlbumArtistSort", "TitleAlbum"}) {
        const int c = columnIndex(column);
        const int order = engine::compareJetText(a[c].toStdString(), b[c].toStdString());
        if (order != 0)
            return order < 0;
    }
    for (const char* column : {"Item", "Index"}) {
        const int c = columnIndex(column);
        if (a[c].toInt() != b[c].toInt())
            return a[c].toInt() < b[c].toInt();
    }
    return true;
}

}  // namespace albumtest
