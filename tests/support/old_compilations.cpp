#include "support/old_compilations.h"

#include <QCryptographicHash>
#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QHash>
#include <QtEndian>
#include <stdexcept>

namespace testsupport {

namespace {

using jet4::Type;

const char* const kCoverStart =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss Arial;}}\r\n"
    "{\\colortbl ;\\red0\\green0\\blue128;}\r\n"
    "\\pard\\qc\\cf1\\b\\f0\\fs24 Caf\\'e9 del Mar \\{Vol. 1\\}\\b0\\par\r\n";

// A cover long enough to be stored outside its row: one line a track.
QString coverText(int tracks) {
    QString text = QString::fromLatin1(kCoverStart);
    for (int i = 1; i <= tracks; ++i) {
        text += QStringLiteral("\\pard\\ql\\fs16 %1. Ni\\'f1a \\{take %1\\}\\par\r\n").arg(i);
    }
    return text + QStringLiteral("}");
}

struct CompilationPlan {
    int id;
    QString name;
    int tracks;
};

std::vector<CompilationPlan> plans(jet4::Format format, int trackCount) {
    const QString eastern =
        format == jet4::Format::Jet4 ? QStringLiteral("さくら Mix") : QStringLiteral("Ærø Sommer");
    // Shares of the tracks, in fifths: 1, 1, 1, 1 and the rest.
    const int fifth = trackCount / 5;
    return {{1, QStringLiteral("Café del Mar"), fifth},
            {2, QStringLiteral("Straße der Lieder"), fifth},
            {4, eastern, fifth},
            {7, QStringLiteral("Beatles Best"), fifth},
            {9, QStringLiteral("Zappa {live}"), trackCount - 4 * fifth},
            {12, QStringLiteral("Empty for now"), 0}};
}

QVariantList compilationRow(const CompilationPlan& plan, int index) {
    const QVariant none;
    const QVariantList manufacturers{QStringLiteral("Sony"), QStringLiteral("Müller"), none};
    const QVariantList formats{QStringLiteral("MD"), QStringLiteral("MiniDisc 80"),
                               QStringLiteral("Cassette")};
    const QVariantList dates{QDate(1997, 1, 21),  none,
                             QDate(2003, 12, 31), QDateTime(QDate(2001, 5, 1), QTime(13, 45, 30)),
                             QDate(1899, 12, 30), none};
    const QVariantList notes{none, QStringLiteral("Für Oma – zum 80."),    QString(""),
                             none, QStringLiteral("Line one\r\nline two"), none};
    const QVariant cover = index == 0 ? QVariant(coverText(plan.tracks)) : none;
    const double seconds = 0;  // SumTime, stored as a Double by the old versions
    return {plan.id,
            plan.name,
            plan.tracks,
            seconds,
            manufacturers[index % manufacturers.size()],
            formats[index % formats.size()],
            QVariantList{74, 80, 90}[index % 3],
            index % 2 == 0 ? QVariant(QStringLiteral("Box %1").arg(index)) : none,
            cover,
            dates[index],
            notes[index]};
}

QString artistOf(int n, jet4::Format format) {
    switch (n % 5) {
        case 0:
            return QStringLiteral("Björk");
        case 1:
            return QStringLiteral("Motörhead");
        case 2:
            return format == jet4::Format::Jet4 ? QStringLiteral("宇多田ヒカル")
                                                : QStringLiteral("Françoise Hardy");
        case 3:
            return QStringLiteral("The Beatles");
        default:
            return QStringLiteral("O'Neil & Söhne");
    }
}

QVariantList trackRow(int compilation, int trackNo, int n, jet4::Format format) {
    const QVariant none;
    const QString artist = artistOf(n, format);
    return {compilation,
            trackNo,
            artist,
            QStringLiteral("Title %1 “quoted”").arg(n),
            QStringLiteral("Album %1").arg(n / 12),
            n % 4 == 0 ? QStringLiteral("Various") : artist,
            120 + (n * 37) % 300,
            n % 7 == 0 ? none : QVariant(1960 + n % 40),
            n % 3 == 0,
            n % 5 == 0 ? QVariant(QStringLiteral("Remix")) : none,
            1 + n % 2,
            1 + n % 20,
            n % 6 == 0 ? none : QVariant(QString(n % 5 + 1, QLatin1Char('*'))),
            artist.toUpper(),
            QStringLiteral("ALBUM ARTIST %1").arg(n % 9),
            n % 8 == 0 ? none : QVariant(QStringLiteral("Shelf %1").arg(n % 8)),
            100000 + n,
            5000 + n / 12};
}

std::vector<QVariantList> oneColumn(const QVariantList& values) {
    std::vector<QVariantList> rows;
    for (const QVariant& value : values) {
        rows.push_back({value});
    }
    return rows;
}

jet4::Table table(const QString& name, const std::vector<QVariantList>& rows, jet4::Format format) {
    jet4::Table written(name, oldColumns(name), format);
    for (const QVariantList& row : rows) {
        written.addRow(row);
    }
    return written;
}

}  // namespace

std::vector<jet4::Column> oldColumns(const QString& table) {
    if (table == QLatin1String("Compilation")) {
        return {{"CompilationID_P", Type::Long, 0, true},
                {"Name", Type::Text, 100},
                {"SumTrack", Type::Integer},
                {"SumTime", Type::Double},
                {"Manufacturer", Type::Text, 50},
                {"Format", Type::Text, 50},
                {"C_Length", Type::Integer},
                {"Box", Type::Text, 50},
                {"CoverMemo", Type::Memo},
                {"RecDate", Type::DateTime},
                {"Notes", Type::Memo}};
    }
    if (table == QLatin1String("CompilationTrack")) {
        return {{"CompilationID_F1", Type::Long},
                {"TrackNo", Type::Integer},
                {"Track_Artist_Name", Type::Text},
                {"Track_Title", Type::Text},
                {"Album_Title", Type::Text},
                {"Album_Artist_Name", Type::Text},
                {"Length", Type::Long},
                {"RecordedStart", Type::Integer},
                {"Live", Type::Boolean},
                {"Version", Type::Text},
                {"Item", Type::Integer},
                {"Index", Type::Integer},
                {"Track_Rating", Type::Text, 50},
                {"ArtistSort", Type::Text},
                {"AlbumArtistSort", Type::Text},
                {"AlbumLocation", Type::Text},
                {"AlbumoryTrackID", Type::Long},
                {"AlbumoryAlbumID", Type::Long}};
    }
    if (table == QLatin1String("LstFormat")) {
        return {{"Format2_P", Type::Text, 50}};
    }
    if (table == QLatin1String("LstLength")) {
        return {{"Length_P", Type::Integer}};
    }
    if (table == QLatin1String("LstManufacturer")) {
        return {{"Manufacturer_P", Type::Text, 50}};
    }
    throw std::invalid_argument("no such table: " + table.toStdString());
}

OldCompilationRows sampleOldCompilations(jet4::Format format, int trackCount) {
    OldCompilationRows rows;
    int n = 0;
    int index = 0;
    for (const CompilationPlan& plan : plans(format, trackCount)) {
        rows.compilations.push_back(compilationRow(plan, index++));
        double seconds = 0;  // the sums agree with the tracks, as the old versions kept them
        for (int trackNo = 1; trackNo <= plan.tracks; ++trackNo) {
            rows.tracks.push_back(trackRow(plan.id, trackNo, n++, format));
            seconds += rows.tracks.back()[6].toDouble();
        }
        rows.compilations.back()[3] = seconds;
    }
    rows.formats = oneColumn({QStringLiteral("MD"), QStringLiteral("MiniDisc 80"),
                              QStringLiteral("Cassette"), QStringLiteral("Bänder")});
    rows.lengths = oneColumn({60, 74, 80, 90, 99});
    rows.manufacturers =
        oneColumn({QStringLiteral("Sony"), QStringLiteral("Müller"), QStringLiteral("BASF")});
    return rows;
}

void writeOldCompilationDatabase(const QString& path, const OldCompilationRows& rows,
                                 jet4::Format format) {
    jet4::writeDatabase(
        path,
        {table("Compilation", rows.compilations, format),
         table("CompilationTrack", rows.tracks, format), table("LstFormat", rows.formats, format),
         table("LstLength", rows.lengths, format),
         table("LstManufacturer", rows.manufacturers, format)},
        format);
}

QByteArray fileDigest(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
}

void zeroADataPageOfTheLargestTable(const QString& path, jet4::Format format) {
    const qsizetype pageSize = format == jet4::Format::Jet4 ? 4096 : 2048;
    constexpr char kDataPage = 0x01;
    constexpr int kOwnerOffset = 4;  // the page of the table's definition
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) {
        throw std::runtime_error("cannot open " + path.toStdString());
    }
    QByteArray bytes = file.readAll();
    QHash<quint32, QList<qsizetype>> pagesOfTable;
    for (qsizetype page = 1; page < bytes.size() / pageSize; ++page) {
        const char* start = bytes.constData() + page * pageSize;
        if (start[0] == kDataPage) {
            pagesOfTable[qFromLittleEndian<quint32>(start + kOwnerOffset)] << page;
        }
    }
    QList<qsizetype> largest;
    for (const QList<qsizetype>& pages : pagesOfTable) {
        largest = pages.size() > largest.size() ? pages : largest;
    }
    if (largest.size() < 2) {
        throw std::runtime_error("no table of several data pages in " + path.toStdString());
    }
    bytes.replace(largest[largest.size() / 2] * pageSize, pageSize, QByteArray(pageSize, '\0'));
    file.seek(0);
    file.write(bytes);
}

}  // namespace testsupport
