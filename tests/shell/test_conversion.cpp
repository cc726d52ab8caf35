// Access compilation databases of earlier versions, copied into today's format.
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include "access/access_reader.h"
#include "engine/jet_dialect.h"
#include "shell/database_conversion.h"
#include "shell_fixture.h"
#include "support/old_compilations.h"
#include "support/paths.h"
#include "support/sqlite_rows.h"

namespace {

using testsupport::OldCompilationRows;

// The rows as the converted database keeps them: dates as the engine's ISO text, yes/no as
// -1/0. Numbers compare by value, whatever their type.
QList<QVariantList> storedRows(const std::vector<QVariantList>& rows) {
    QList<QVariantList> stored(rows.begin(), rows.end());
    for (QVariantList& row : stored) {
        for (QVariant& value : row) {
            if (value.typeId() == QMetaType::Bool) {
                value = value.toBool() ? -1 : 0;
            } else if (value.typeId() == QMetaType::QDate ||
                       value.typeId() == QMetaType::QDateTime) {
                value = engine::isoDateText(value.toDateTime());
            }
        }
    }
    return stored;
}

// "SELECT a, b, ... FROM table ORDER BY order" over the old table's columns.
QString selectOldColumns(const QString& table, const QString& order) {
    QStringList names;
    for (const jet4::Column& column : testsupport::oldColumns(table))
        names << '"' + column.name + '"';
    return QStringLiteral("SELECT %1 FROM %2 ORDER BY %3").arg(names.join(", "), table, order);
}

class Conversion : public ShellTest {
  protected:
    void SetUp() override {
        engine::setForeignTableReader(std::make_shared<accessfile::AccessTableReader>(
            testsupport::programPath("mixorama-mdbread")));
        // Scratch copies go to a folder of this test, so that it can see none are left. Its ";"
        // must not cut the scratch copy's name out of the link to it.
        QDir(dir.path()).mkdir(kScratch);
        savedTmp = qgetenv("TMPDIR");
        qputenv("TMPDIR", dir.file(kScratch).toUtf8());
    }
    void TearDown() override {
        qputenv("TMPDIR", savedTmp);
        ShellTest::TearDown();
    }

    QString writeOld(const OldCompilationRows& rows, jet4::Format format = jet4::Format::Jet4) {
        testsupport::writeOldCompilationDatabase(old, rows, format);
        return old;
    }
    // The files of the test folder and of its scratch folder.
    QStringList files() const {
        return QDir(dir.path()).entryList(QDir::Files) +
               QDir(dir.file(kScratch)).entryList(QDir::Files);
    }
    int errorOf(const QString& source, const QString& destination) {
        return errorNumber([&] { shell::convertAccessDatabase(source, destination); }, &message);
    }

    static constexpr char kScratch[] = "scratch;folder";
    QByteArray savedTmp;
    const QString old = dir.file("coll.mdb");
    const QString converted = dir.file("coll-converted.mdb");
    QString message;
};

class Formats : public Conversion, public ::testing::WithParamInterface<jet4::Format> {};

TEST_P(Formats, TheCopyKeepsEveryRowIdAndValueAndTheOldValueLists) {
    const OldCompilationRows rows = testsupport::sampleOldCompilations(GetParam(), 120);
    const QByteArray before = testsupport::fileDigest(writeOld(rows, GetParam()));
    EXPECT_TRUE(shell::isAccessCompilationDatabase(old));
    const shell::ConversionCounts counts = shell::convertAccessDatabase(old, converted);
    EXPECT_EQ(counts.compilations, 6);
    EXPECT_EQ(counts.tracks, 120);
    EXPECT_EQ(counts.tracksLeftOut, 0);
    EXPECT_TRUE(counts.corrections.isEmpty()) << counts.corrections.join('\n').toStdString();
    EXPECT_EQ(sqliteRows(converted, selectOldColumns("Compilation", "CompilationID_P")),
              storedRows(rows.compilations));
    EXPECT_EQ(
        sqliteRows(converted, selectOldColumns("CompilationTrack", "CompilationID_F1, TrackNo")),
        storedRows(rows.tracks));
    EXPECT_EQ(testsupport::integrityCheck(converted), "ok");
    EXPECT_EQ(sqliteRows(converted, "SELECT Manufacturer_P FROM LstManufacturer ORDER BY 1"),
              QList<QVariantList>({{"BASF"}, {"Müller"}, {"Sony"}}));
    EXPECT_EQ(testsupport::fileDigest(old), before);
    EXPECT_EQ(files(), QStringList({"coll-converted.mdb", "coll.mdb"}));
    // A new compilation is numbered after the highest id copied.
    testsupport::execRaw(
        converted, "INSERT INTO Compilation (Name, Format, C_Length) VALUES ('New', 'MD', 74)");
    EXPECT_EQ(testsupport::queryRaw(converted, "SELECT max(CompilationID_P) FROM Compilation"),
              "13");
}

TEST_F(Conversion, MatchesColumnsWithoutRegardToCaseAndLeavesTheRestToTheTemplate) {
    using jet4::Type;
    jet4::Table compilations("COMPILATION", {{"compilationid_p", Type::Long, 0, true},
                                             {"NAME", Type::Text},
                                             {"format", Type::Text},
                                             {"c_length", Type::Integer},
                                             {"Rating", Type::Text}});  // not in today's schema
    compilations.addRow({5, "Mix", "MD", 74, "good"});
    jet4::Table tracks("compilationtrack", {{"COMPILATIONID_F1", Type::Long},
                                            {"trackno", Type::Integer},
                                            {"track_title", Type::Text},
                                            {"index", Type::Integer}});
    tracks.addRow({5, 1, "Kept", 3});
    tracks.addRow({99, 1, "Orphan", 1});  // its compilation is not in the file
    std::vector<jet4::Table> tables{compilations, tracks};
    for (const char* list : {"LstFormat", "LstLength", "LstManufacturer"})
        tables.emplace_back(list, testsupport::oldColumns(list));
    jet4::writeDatabase(old, tables);

    // Open asks, proposes a copy beside the old file, converts it and tells the user about the
    // track left out and the sums it counted.
    dialogs.answerMessage(platform::MessageAnswer::No);
    EXPECT_FALSE(shell::databaseToOpen(old, dialogs, feedback));
    EXPECT_EQ(dialogs.lastMessageText(), shell::conversionQuestion(old));
    dialogs.answerMessage(platform::MessageAnswer::Yes);
    dialogs.answerFile(converted);
    EXPECT_EQ(shell::databaseToOpen(old, dialogs, feedback), std::optional<QString>(converted));
    ASSERT_EQ(dialogs.saveRequests().size(), 1u);
    EXPECT_EQ(dialogs.saveRequests()[0].fileName, "coll-converted.mdb");
    EXPECT_EQ(dialogs.saveRequests()[0].initialFolder, dir.path());
    EXPECT_FALSE(feedback.statusTexts.filter(shell::kConvertingText).isEmpty());
    EXPECT_EQ(dialogs.lastMessageText(),
              "1 track(s) of the old file belong to no compilation and were not copied.\r\n"
              "Corrected in the copy:\r\n"
              "Compilation 'Mix': SumTrack set from 0 to 1.");
    EXPECT_EQ(sqliteRows(converted, "SELECT CompilationID_P, Name, SumTrack, Box FROM Compilation"),
              QList<QVariantList>({{qint64(5), "Mix", qint64(1), QVariant()}}));
    EXPECT_EQ(sqliteRows(converted, "SELECT Track_Title, \"Index\", Live FROM CompilationTrack"),
              QList<QVariantList>({{"Kept", qint64(3), qint64(0)}}));
    EXPECT_EQ(testsupport::queryRaw(converted, "SELECT count(*) FROM LstFormat"), "0");
}

TEST_F(Conversion, AFailureLeavesNeitherDestinationNorTemporaryFiles) {
    OldCompilationRows rows = testsupport::sampleOldCompilations(jet4::Format::Jet4, 20);
    rows.compilations[3][1] = "CAFÉ DEL MAR";  // the same name as the first, but for case
    const QByteArray before = testsupport::fileDigest(writeOld(rows));
    EXPECT_EQ(errorOf(old, converted), engine::jet::kDuplicateValue);
    EXPECT_EQ(files(), QStringList({"coll.mdb"}));
    EXPECT_EQ(testsupport::fileDigest(old), before);

    QFile(old).resize(QFile(old).size() - 100);  // cut short
    EXPECT_EQ(errorOf(old, converted), engine::jet::kNotADatabase);
    EXPECT_EQ(files(), QStringList({"coll.mdb"}));

    const QString ours = dir.file("ours.mdb");
    testsupport::createCompilationDatabase(ours);
    EXPECT_FALSE(shell::isAccessCompilationDatabase(ours));
    EXPECT_EQ(errorOf(ours, converted), engine::jet::kNotADatabase);
    EXPECT_EQ(message, "'" + ours + "' is not an Access database: there is nothing to convert.");

    // An existing destination is never overwritten.
    writeOld(testsupport::sampleOldCompilations(jet4::Format::Jet4, 10));
    QFile::copy(ours, converted);
    EXPECT_EQ(errorOf(old, converted), engine::jet::kDatabaseExists);
    EXPECT_EQ(fileBytes(converted), fileBytes(ours));
}

// A damaged page reads as no rows without an error. The conversion compares what it read with
// the row count the table's definition states and copies nothing unless asked to keep what it
// could read.
TEST_P(Formats, SaysWhatItCouldNotReadAndKeepsAPartialCopyOnlyOnRequest) {
    writeOld(testsupport::sampleOldCompilations(GetParam()), GetParam());
    testsupport::zeroADataPageOfTheLargestTable(old, GetParam());
    const QByteArray before = testsupport::fileDigest(old);

    EXPECT_EQ(errorOf(old, converted), engine::jet::kDatabaseCorrupt);
    const QRegularExpressionMatch found =
        QRegularExpression("CompilationTrack: 300 rows expected, (\\d+) read").match(message);
    ASSERT_TRUE(found.hasMatch()) << message.toStdString();
    const qint64 read = found.captured(1).toLongLong();
    EXPECT_LT(read, 300);
    EXPECT_TRUE(message.startsWith("'" + old + "' is damaged")) << message.toStdString();
    EXPECT_EQ(files(), QStringList({"coll.mdb"}));

    const shell::ConversionCounts counts =
        shell::convertAccessDatabase(old, converted, {}, {.keepPartial = true});
    EXPECT_EQ(counts.compilations, 6);
    EXPECT_EQ(counts.tracks + counts.tracksLeftOut, read);
    EXPECT_EQ(counts.notes.value(1), found.captured(0));
    EXPECT_EQ(testsupport::queryRaw(converted, "SELECT count(*) FROM CompilationTrack"),
              QString::number(counts.tracks));
    EXPECT_EQ(testsupport::fileDigest(old), before);
}

INSTANTIATE_TEST_SUITE_P(Conversion, Formats,
                         ::testing::Values(jet4::Format::Jet4, jet4::Format::Jet3),
                         [](const auto& info) {
                             return std::string(info.param == jet4::Format::Jet4 ? "Jet4" : "Jet3");
                         });

}  // namespace
