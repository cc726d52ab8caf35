#include "jet4/jet4.h"
#include "support/temp_dir.h"
#include "tools/mdb_tools.h"

#include <gtest/gtest.h>
#include <QDateTime>
#include <QFile>
#include <QRegularExpression>
#include <stdexcept>

namespace {

using jet4::Type;

class Jet4Writer : public ::testing::Test {
  protected:
    QString write(const std::vector<jet4::Table>& tables) {
        const QString path = dir_.file(QStringLiteral("db%1.mdb").arg(++files_));
        jet4::writeDatabase(path, tables);
        return path;
    }
    static QVariantList strings(std::initializer_list<const char*> cells) {
        QVariantList out;
        for (const char* c : cells)
            out << (c ? QVariant(QString::fromUtf8(c)) : QVariant());
        return out;
    }

    testsupport::TempDir dir_;
    int files_ = 0;
};

jet4::Table allTypes() {
    return jet4::Table{"AllTypes",
                       {{"Flag", Type::Boolean},
                        {"Small", Type::Byte},
                        {"Int", Type::Integer},
                        {"Big", Type::Long},
                        {"Money", Type::Currency},
                        {"Float", Type::Single},
                        {"Real", Type::Double},
                        {"When", Type::DateTime},
                        {"Name", Type::Text, 50},
                        {"Note", Type::Memo},
                        {"Wide", Type::Text}}};
}

// Text that changes along its length, so misplaced parts of a long value show.
QString numberedText(int characters) {
    QString text;
    for (int i = 0; text.size() < characters; ++i)
        text += QStringLiteral("%1 Björk's Ω|").arg(i);
    return text.left(characters);
}

TEST_F(Jet4Writer, ListsExactlyTheUserTablesOfAJet4File) {
    jet4::Table album{"Album", {{"AlbumID", Type::Long}}};
    album.addRow({1});
    jet4::Table empty{"Empty Table", {{"Name", Type::Text}}};
    const QString path = write({album, empty, jet4::Table{"Artist", {{"ArtistID", Type::Long}}}});

    EXPECT_EQ(mdbtools::tables(path), QStringList({"Album", "Empty Table", "Artist"}));
    EXPECT_TRUE(mdbtools::tables(path, true).contains("MSysObjects"));
    EXPECT_EQ(mdbtools::run("mdb-ver", {path}).trimmed(), "JET4");
    EXPECT_EQ(QFile(path).size() % 4096, 0);
}

TEST_F(Jet4Writer, SchemaKeepsColumnNamesTypesAndTextSizes) {
    const QString path = write({allTypes()});
    const std::vector<std::pair<QString, QString>> expected{
        {"Flag", "Boolean NOT NULL"}, {"Small", "Byte"},
        {"Int", "Integer"},           {"Big", "Long Integer"},
        {"Money", "Currency"},        {"Float", "Single"},
        {"Real", "Double"},           {"When", "DateTime"},
        {"Name", "Text (50)"},        {"Note", "Memo/Hyperlink (255)"},
        {"Wide", "Text (255)"}};
    EXPECT_EQ(mdbtools::columns(path, "AllTypes"), expected);
    EXPECT_EQ(mdbtools::header(path, "AllTypes"),
              QStringList({"Flag", "Small", "Int", "Big", "Money", "Float", "Real", "When", "Name",
                           "Note", "Wide"}));
}

TEST_F(Jet4Writer, EveryTypeReadsBackWithItsValue) {
    jet4::Table t = allTypes();
    t.addRow({true, 255, -32768, 2147483647, 1234.5678, 1.5, 3.141592653589793,
              QDateTime(QDate(1987, 5, 1), QTime(13, 45, 30)), "Die Ärzte", "Guns N' Roses",
              "Sigur Rós, \"Ágætis byrjun\""});
    t.addRow({false, 0, 32767, -2147483647 - 1, -0.0001, -2.25e10, 1e-300, QDate(1899, 12, 30),
              "日本", "Motörhead\nAce of Spades", "ab"});
    t.addRow({true, 7, 0, 0, 0, 0.0, -0.5, QDate(2024, 2, 29), "O'Neil", "Ω", "Ωmega Björk"});
    const QString path = write({t});

    const std::vector<QVariantList> expected{
        strings({"1", "255", "-32768", "2147483647", "1234.5678", "1.5", "3.141592653589793",
                 "1987-05-01 13:45:30", "Die Ärzte", "Guns N' Roses",
                 "Sigur Rós, \"Ágætis byrjun\""}),
        strings({"0", "0", "32767", "-2147483648", "-0.0001", "-2.25e+10", "1e-300",
                 "1899-12-30 00:00:00", "日本", "Motörhead\nAce of Spades", "ab"}),
        strings({"1", "7", "0", "0", "0.0000", "0", "-0.5", "2024-02-29 00:00:00", "O'Neil", "Ω",
                 "Ωmega Björk"})};
    EXPECT_EQ(mdbtools::rows(path, "AllTypes"), expected);
}

TEST_F(Jet4Writer, NullsLeaveColumnsEmptyAndYesNoFalse) {
    jet4::Table t = allTypes();
    t.addRow(QVariantList(11));
    t.addRow({{}, 1, {}, 2, {}, {}, {}, {}, "x", {}, {}});
    const QString path = write({t});

    const std::vector<QVariantList> expected{
        strings({"0", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                 nullptr, nullptr}),
        strings(
            {"0", "1", nullptr, "2", nullptr, nullptr, nullptr, nullptr, "x", nullptr, nullptr})};
    EXPECT_EQ(mdbtools::rows(path, "AllTypes"), expected);
}

TEST_F(Jet4Writer, LongMemosAreReadWhole) {
    // Inline, one long-value row, the largest single row, and chains of two and of many pages.
    const std::vector<int> lengths{400, 1500, 2040, 2041, 30000, 1800, 1800, 1800};
    jet4::Table t{"Notes", {{"ID", Type::Long}, {"Note", Type::Memo}, {"Title", Type::Text}}};
    for (size_t i = 0; i < lengths.size(); ++i)
        t.addRow({int(i), numberedText(lengths[i]), QStringLiteral("after %1").arg(i)});
    const QString path = write({t});

    const auto rows = mdbtools::rows(path, "Notes");
    ASSERT_EQ(rows.size(), lengths.size());
    for (size_t i = 0; i < lengths.size(); ++i) {
        EXPECT_EQ(rows[i][0].toInt(), int(i));
        EXPECT_EQ(rows[i][1].toString(), numberedText(lengths[i])) << "length " << lengths[i];
        EXPECT_EQ(rows[i][2].toString(), QStringLiteral("after %1").arg(i));
    }
}

TEST_F(Jet4Writer, ManyRowsSpanManyPages) {
    // Enough pages that the usage map needs bitmap pages of its own.
    constexpr int kRows = 100000;
    jet4::Table t{"Track",
                  {{"TrackID", Type::Long}, {"Title", Type::Text}, {"Live", Type::Boolean}}};
    for (int i = 0; i < kRows; ++i)
        t.addRow({i, QStringLiteral("Track number %1 of the long list").arg(i), i % 3 == 0});
    jet4::Table small{"Small", {{"ID", Type::Long}}};
    for (int i = 0; i < 1000; ++i)
        small.addRow({i});
    const QString path = write({small, t});
    EXPECT_GT(QFile(path).size(), 600 * 4096);

    const auto rows = mdbtools::rows(path, "Track");
    ASSERT_EQ(rows.size(), size_t(kRows));
    for (int i = 0; i < kRows; ++i) {
        ASSERT_EQ(rows[i][0].toInt(), i);
        ASSERT_EQ(rows[i][1].toString(), QStringLiteral("Track number %1 of the long list").arg(i));
        ASSERT_EQ(rows[i][2].toString(), i % 3 == 0 ? "1" : "0");
    }
    EXPECT_EQ(mdbtools::rows(path, "Small").size(), 1000u);
    EXPECT_EQ(mdbtools::run("mdb-count", {path, "Track"}).trimmed(), "100000");
}

TEST_F(Jet4Writer, EmptyTableHasColumnsButNoRows) {
    const QString path =
        write({jet4::Table{"Location", {{"LocationID", Type::Long}, {"Location", Type::Text}}}});
    EXPECT_EQ(mdbtools::header(path, "Location"), QStringList({"LocationID", "Location"}));
    EXPECT_TRUE(mdbtools::rows(path, "Location").empty());
}

TEST_F(Jet4Writer, SameTablesGiveTheSameBytes) {
    jet4::Table t = allTypes();
    t.addRow({true, 1, 2, 3, 4.5, 6.5, 7.5, QDate(2001, 1, 1), "a", numberedText(9000), "b"});
    const QString first = write({t});
    const QString second = write({t});
    QFile a(first), b(second);
    ASSERT_TRUE(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
    EXPECT_EQ(a.readAll(), b.readAll());
}

TEST_F(Jet4Writer, RejectsValuesAColumnCannotHold) {
    jet4::Table t{"T", {{"Small", Type::Byte}, {"Int", Type::Integer}, {"Name", Type::Text, 5}}};
    EXPECT_THROW(t.addRow({1, 2}), std::runtime_error);
    EXPECT_THROW(t.addRow({256, 2, "a"}), std::runtime_error);
    EXPECT_THROW(t.addRow({1, 40000, "a"}), std::runtime_error);
    EXPECT_THROW(t.addRow({1, 2.5, "a"}), std::runtime_error);
    EXPECT_THROW(t.addRow({"x", 2, "a"}), std::runtime_error);
    EXPECT_THROW(t.addRow({1, 2, "toolong"}), std::runtime_error);
    EXPECT_EQ(t.rowCount(), 0);
    EXPECT_THROW((jet4::Table{"T", {{"A", Type::Long}, {"a", Type::Text}}}), std::runtime_error);
    jet4::Table wide{"Wide",
                     {{"A", Type::Text},
                      {"B", Type::Text},
                      {"C", Type::Text},
                      {"D", Type::Text},
                      {"E", Type::Text},
                      {"F", Type::Text},
                      {"G", Type::Text},
                      {"H", Type::Text},
                      {"I", Type::Text}}};
    const QString full(255, QChar(0x3a9));
    EXPECT_THROW(wide.addRow({full, full, full, full, full, full, full, full, full}),
                 std::runtime_error);
}

// Little-endian 32 bits of a file at a byte offset.
quint32 fileWord(const QString& path, qint64 at) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(at))
        return 0;
    const QByteArray bytes = file.read(4);
    return bytes.size() == 4 ? quint32(quint8(bytes[0])) | quint32(quint8(bytes[1])) << 8 |
                                   quint32(quint8(bytes[2])) << 16 | quint32(quint8(bytes[3])) << 24
                             : 0;
}

TEST_F(Jet4Writer, AnAutoNumberColumnIsMarkedAndItsCounterContinuesAfterTheHighest) {
    jet4::Table t{"Compilation",
                  {{"CompilationID_P", Type::Long, 0, true}, {"Name", Type::Text, 100}}};
    t.addRow({7, "Seven"});
    t.addRow({3, "Three"});
    jet4::Table plain{"Plain", {{"ID", Type::Long}}};
    plain.addRow({40});
    const QString path = write({t, plain});

    // mdbtools calls an AutoNumber a serial column; the plain Long stays an integer.
    const QString schema =
        mdbtools::run("mdb-schema", {"-T", "Compilation", "--no-relations", path, "postgres"});
    EXPECT_TRUE(schema.contains(QRegularExpression(R"("CompilationID_P"\s+SERIAL)",
                                                   QRegularExpression::CaseInsensitiveOption)))
        << schema.toStdString();
    EXPECT_FALSE(mdbtools::run("mdb-schema", {"-T", "Plain", "--no-relations", path, "postgres"})
                     .contains("SERIAL"));
    EXPECT_EQ(mdbtools::rows(path, "Compilation"),
              (std::vector<QVariantList>{strings({"7", "Seven"}), strings({"3", "Three"})}));
    // Access numbers the next row from the table definition's counter: pages 3 and 4 hold the
    // two definitions, the counter sits after the row count.
    EXPECT_EQ(fileWord(path, 3 * 4096 + 0x14), 8u);
    EXPECT_EQ(fileWord(path, 4 * 4096 + 0x14), 0u);
}

TEST_F(Jet4Writer, RejectsAutoNumbersItCannotKeep) {
    EXPECT_THROW((jet4::Table{"T", {{"ID", Type::Text, 0, true}}}), std::runtime_error);
    EXPECT_THROW((jet4::Table{"T", {{"A", Type::Long, 0, true}, {"B", Type::Long, 0, true}}}),
                 std::runtime_error);
    jet4::Table t{"T", {{"ID", Type::Long, 0, true}, {"Name", Type::Text}}};
    EXPECT_THROW(t.addRow({{}, "no id"}), std::runtime_error);
    EXPECT_THROW(t.addRow({"x", "not a number"}), std::runtime_error);
    EXPECT_EQ(t.rowCount(), 0);
    EXPECT_EQ(t.nextAutoNumber(), 1u);
}

TEST_F(Jet4Writer, ReportsFilesItCannotWrite) {
    const jet4::Table t{"T", {{"A", Type::Long}}};
    EXPECT_THROW(jet4::writeDatabase(dir_.file("missing/folder/x.mdb"), {t}), std::runtime_error);
    EXPECT_THROW(jet4::writeDatabase(dir_.file("twice.mdb"), {t, t}), std::runtime_error);
    EXPECT_THROW(jet4::writeDatabase(dir_.file("reserved.mdb"),
                                     {jet4::Table{"MSysObjects", {{"A", Type::Long}}}}),
                 std::runtime_error);
}

}  // namespace
