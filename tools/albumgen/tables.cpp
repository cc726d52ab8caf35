#include "albumgen/albumgen.h"

#include <functional>

namespace albumgen {
namespace {

using jet4::Type;
using RowSink = std::function<void(const QVariantList&)>;

QVariant text(const QString& s) {
    return s.isNull() ? QVariant() : QVariant(s);
}
template <typename T>
QVariant optional(const std::optional<T>& v) {
    return v ? QVariant(*v) : QVariant();
}

struct TableSource {
    QString name;
    std::vector<jet4::Column> columns;
    std::function<void(const Collection&, const RowSink&)> rows;
};

void links(const std::vector<Link>& links, const RowSink& sink) {
    for (const Link& l : links)
        sink({l.artistId, l.otherId});
}

void named(const std::vector<Named>& list, const RowSink& sink) {
    for (const Named& n : list)
        sink({n.id, n.name});
}

void albumRows(const Collection& c, const RowSink& sink) {
    for (const Album& a : c.albums)
        sink({a.id, a.title, a.artistSort, optional(a.locationId), a.year, text(a.label),
              optional(a.price), a.discs, a.purchased, text(a.notes)});
}

void artistRows(const Collection& c, const RowSink& sink) {
    for (const Artist& a : c.artists)
        sink({a.id, a.name, a.sortName});
}

void trackRows(const Collection& c, const RowSink& sink) {
    for (const Track& t : c.tracks)
        sink({t.id, t.albumId, t.artistSort, t.title, t.item, t.index, t.length, t.version, t.live,
              t.recordedStart, optional(t.ratingId), text(t.composer), text(t.genre),
              text(t.comment), optional(t.bpm), t.added});
}

// The tables in file order; TrackRating only when the collection has ratings.
std::vector<TableSource> sources(const Collection& c) {
    std::vector<TableSource> out{
        {"Album",
         {{"AlbumID", Type::Long},
          {"Title", Type::Text, 255},
          {"ArtistSort", Type::Text, 100},
          {"LocationID", Type::Long},
          {"Year", Type::Integer},
          {"Label", Type::Text, 100},
          {"Price", Type::Currency},
          {"Discs", Type::Byte},
          {"Purchased", Type::DateTime},
          {"Notes", Type::Memo}},
         albumRows},
        {"Artist",
         {{"ArtistID", Type::Long}, {"Name", Type::Text, 100}, {"ArtistSort", Type::Text, 100}},
         artistRows},
        {"Track",
         {{"TrackID", Type::Long},
          {"AlbumID", Type::Long},
          {"ArtistSort", Type::Text, 100},
          {"Title", Type::Text, 255},
          {"Item", Type::Integer},
          {"Index", Type::Integer},
          {"Length", Type::Long},
          {"Version", Type::Text, 50},
          {"Live", Type::Boolean},
          {"RecordedStart", Type::Text, 20},
          {"TrackRatingID", Type::Long},
          {"Composer", Type::Text, 100},
          {"Genre", Type::Text, 50},
          {"Comment", Type::Memo},
          {"Bpm", Type::Byte},
          {"DateAdded", Type::DateTime}},
         trackRows},
        {"ArtistAlbumLink",
         {{"ArtistID", Type::Long}, {"AlbumID", Type::Long}},
         [](const Collection& c, const RowSink& s) { links(c.artistAlbumLinks, s); }},
        {"ArtistTrackLink",
         {{"ArtistID", Type::Long}, {"TrackID", Type::Long}},
         [](const Collection& c, const RowSink& s) { links(c.artistTrackLinks, s); }},
    };
    if (c.withRating)
        out.push_back({"TrackRating",
                       {{"TrackRatingID", Type::Long}, {"TrackRating", Type::Text, 50}},
                       [](const Collection& c, const RowSink& s) { named(c.ratings, s); }});
    out.push_back({"Location",
                   {{"LocationID", Type::Long}, {"Location", Type::Text, 100}},
                   [](const Collection& c, const RowSink& s) { named(c.locations, s); }});
    return out;
}

}  // namespace

std::vector<TableRows> tableRows(const Collection& collection) {
    std::vector<TableRows> out;
    for (const TableSource& source : sources(collection)) {
        TableRows table{source.name, source.columns, {}};
        source.rows(collection, [&](const QVariantList& row) { table.rows.push_back(row); });
        out.push_back(std::move(table));
    }
    return out;
}

void writeAlbumDatabase(const QString& path, const Options& options) {
    writeCollection(path, generate(options));
}

void writeCollection(const QString& path, const Collection& collection) {
    std::vector<jet4::Table> tables;
    for (const TableSource& source : sources(collection)) {
        jet4::Table table(source.name, source.columns);
        source.rows(collection, [&](const QVariantList& row) { table.addRow(row); });
        tables.push_back(std::move(table));
    }
    jet4::writeDatabase(path, tables);
}

}  // namespace albumgen
