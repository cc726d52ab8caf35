// Access compilation databases of earlier versions, copied into today's format.
#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include "access/access_reader.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "shell/database_commands.h"
#include "shell/database_conversion.h"
#include "support/databases.h"
#include "support/old_compilations.h"
#include "support/paths.h"
#include "support/sqlite_rows.h"
#include "support/temp_dir.h"

namespace {

using testsupport::OldCompilationRows;

// A value as the converted database keeps it: dates as ISO text, yes/no as -1/0, whole numbers
// as integers; text and Null as they are.
QVariant storedForm(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::QDate:
            return value.toDate().toString(Qt::ISODate);
        case QMetaType::QDateTime:
            return value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        case QMetaType::Bool:
            return qint64(value.toBool() ? -1 : 0);
        case QMetaType::Int:
            return qint64(value.toInt());
        case QMetaType::Double:
            return value.toDouble() == double(qint64(value.toDouble()))
                       ? QVariant(qint64(value.toDouble()))
                       : value;
        default:
            return value;
    }
}

QList<QVariantList> storedRows(const std::vector<QVariantList>& rows) {
    QList<QVariantList> stored;
    for (const QVariantList& row : rows) {
        QVariantList values;
        for (const QVariant& value : row)
            values << storedForm(value);
        stored << values;
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

QStringList sortedColumn(const QString& file, const QString& sql) {
    QStringList values;
    for (const QVariantList& row : sqliteRows(file, sql))
        values << row.value(0).toString();
    values.sort();
    return values;
}

class Conversion : public ::testing::Test, public shell::CommandFeedback {
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
        engine::Workspace::defaultWorkspace().close();
    }
    void setBusy(bool busy) override { busyCalls << busy; }
    void setStatusText(const QString& text) override { statusTexts << text; }
    void processPendingEvents() override {}

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
        try {
            shell::convertAccessDatabase(source, destination);
        } catch (const engine::JetError& error) {
            message = error.description();
            return error.number();
        }
        return 0;
    }

    static constexpr char kScratch[] = "scratch;folder";
    testsupport::TempDir dir;
    QByteArray savedTmp;
    const QString old = dir.file("coll.mdb");
    const QString converted = dir.file("coll-converted.mdb");
    QString message;
    platform::ScriptedDialogs dialogs;
    QList<bool> busyCalls;
    QStringList statusTexts;
};

void expectCopiedRowByRow(const OldCompilationRows& rows, const QString& converted) {
    EXPECT_EQ(sqliteRows(converted, selectOldColumns("Compilation", "CompilationID_P")),
              storedRows(rows.compilations));
    EXPECT_EQ(
        sqliteRows(converted, selectOldColumns("CompilationTrack", "CompilationID_F1, TrackNo")),
        storedRows(rows.tracks));
    EXPECT_EQ(testsupport::integrityCheck(converted), "ok");
}

TEST_F(Conversion, Jet4KeepsEveryRowIdAndValue) {
    const OldCompilationRows rows = testsupport::sampleOldCompilations(jet4::Format::Jet4);
    const QByteArray before = testsupport::fileDigest(writeOld(rows));
    EXPECT_TRUE(shell::isAccessCompilationDatabase(old));

    const shell::ConversionCounts counts = shell::convertAccessDatabase(old, converted);
    EXPECT_EQ(counts.compilations, 6);
    EXPECT_EQ(counts.tracks, 300);
    EXPECT_EQ(counts.tracksLeftOut, 0);
    EXPECT_TRUE(counts.corrections.isEmpty()) << counts.corrections.join('\n').toStdString();
    expectCopiedRowByRow(rows, converted);
    // The cover text is the RTF as stored, escapes and braces included.
    EXPECT_TRUE(testsupport::queryRaw(converted,
                                      "SELECT CoverMemo FROM Compilation WHERE "
                                      "CompilationID_P = 1")
                    .contains(R"(Caf\'e9 del Mar \{Vol. 1\})"));
    // The old value lists replace the template's.
    EXPECT_EQ(sortedColumn(converted, "SELECT Format2_P FROM LstFormat"),
              QStringList({"Bänder", "Cassette", "MD", "MiniDisc 80"}));
    EXPECT_EQ(sortedColumn(converted, "SELECT Length_P FROM LstLength"),
              QStringList({"60", "74", "80", "90", "99"}));
    EXPECT_EQ(sortedColumn(converted, "SELECT Manufacturer_P FROM LstManufacturer"),
              QStringList({"BASF", "Müller", "Sony"}));
    EXPECT_EQ(testsupport::fileDigest(old), before);
    EXPECT_EQ(files(), QStringList({"coll-converted.mdb", "coll.mdb"}));

    // A new compilation is numbered after the highest id copied.
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(converted);
    database.execute("INSERT INTO Compilation (Name, Format, C_Length) VALUES ('New', 'MD', 74)");
    EXPECT_EQ(testsupport::queryRaw(converted,
                                    "SELECT CompilationID_P FROM Compilation WHERE Name = 'New'"),
              "13");
}

TEST_F(Conversion, Jet3KeepsItsWesternText) {
    const OldCompilationRows rows = testsupport::sampleOldCompilations(jet4::Format::Jet3, 120);
    writeOld(rows, jet4::Format::Jet3);
    EXPECT_EQ(shell::convertAccessDatabase(old, converted).tracks, 120);
    expectCopiedRowByRow(rows, converted);
    EXPECT_EQ(testsupport::queryRaw(converted,
                                    "SELECT Name FROM Compilation WHERE "
                                    "CompilationID_P = 4"),
              "Ærø Sommer");
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

    EXPECT_TRUE(shell::isAccessCompilationDatabase(old));
    const shell::ConversionCounts counts = shell::convertAccessDatabase(old, converted);
    EXPECT_EQ(counts.tracks, 1);
    EXPECT_EQ(counts.tracksLeftOut, 1);
    EXPECT_EQ(sqliteRows(converted,
                         "SELECT CompilationID_P, Name, SumTrack, Box, Notes FROM "
                         "Compilation"),
              QList<QVariantList>({{qint64(5), "Mix", qint64(1), QVariant(), QVariant()}}))
        << "the sums missing from the old file are counted";
    EXPECT_EQ(counts.corrections, QStringList({"Compilation 'Mix': SumTrack set from 0 to 1."}));
    EXPECT_EQ(sqliteRows(converted,
                         "SELECT Track_Title, \"Index\", Live, Length FROM "
                         "CompilationTrack"),
              QList<QVariantList>({{"Kept", qint64(3), qint64(0), QVariant()}}));
    EXPECT_EQ(testsupport::queryRaw(converted, "SELECT count(*) FROM LstFormat"), "0");

    // Open tells the user about the track it left out.
    dialogs.answerMessage(platform::MessageAnswer::Yes);
    dialogs.answerFile(dir.file("second.mdb"));
    EXPECT_TRUE(shell::databaseToOpen(old, dialogs, *this));
    EXPECT_EQ(dialogs.lastMessageText(),
              "1 track(s) of the old file belong to no compilation and were not copied.\r\n"
              "Corrected in the copy:\r\n"
              "Compilation 'Mix': SumTrack set from 0 to 1.");
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
}

// A damaged page reads as no rows without an error. The conversion compares what it read with
// the row count the table's definition states and copies nothing unless asked to keep what it
// could read.
class DamagedConversion : public Conversion, public ::testing::WithParamInterface<jet4::Format> {};

TEST_P(DamagedConversion, SaysWhatItCouldNotReadAndKeepsAPartialCopyOnlyOnRequest) {
    writeOld(testsupport::sampleOldCompilations(GetParam()), GetParam());
    testsupport::zeroADataPageOfTheLargestTable(old, GetParam());
    const QByteArray before = testsupport::fileDigest(old);

    EXPECT_EQ(errorOf(old, converted), engine::jet::kDatabaseCorrupt);
    const QRegularExpression line(
        QStringLiteral("CompilationTrack: 300 rows expected, (\\d+) read"));
    const QRegularExpressionMatch found = line.match(message);
    ASSERT_TRUE(found.hasMatch()) << message.toStdString();
    const qint64 read = found.captured(1).toLongLong();
    EXPECT_LT(read, 300);
    EXPECT_TRUE(message.startsWith("'" + old + "' is damaged")) << message.toStdString();
    EXPECT_EQ(files(), QStringList({"coll.mdb"}));

    shell::ConversionOptions keep;
    keep.keepPartial = true;
    const shell::ConversionCounts counts = shell::convertAccessDatabase(old, converted, {}, keep);
    EXPECT_EQ(counts.compilations, 6);
    EXPECT_EQ(counts.tracks + counts.tracksLeftOut, read);
    EXPECT_EQ(
        counts.notes,
        QStringList({"Not every row of the damaged file could be read:",
                     QStringLiteral("CompilationTrack: 300 rows expected, %1 read").arg(read)}));
    EXPECT_EQ(testsupport::queryRaw(converted, "SELECT count(*) FROM CompilationTrack"),
              QString::number(counts.tracks));
    EXPECT_EQ(files(), QStringList({"coll-converted.mdb", "coll.mdb"}));
    EXPECT_EQ(testsupport::fileDigest(old), before);
}

INSTANTIATE_TEST_SUITE_P(Formats, DamagedConversion,
                         ::testing::Values(jet4::Format::Jet4, jet4::Format::Jet3),
                         [](const auto& info) {
                             return std::string(info.param == jet4::Format::Jet4 ? "Jet4" : "Jet3");
                         });

TEST_F(Conversion, AnExistingDestinationIsNeverOverwritten) {
    writeOld(testsupport::sampleOldCompilations(jet4::Format::Jet4, 10));
    QFile taken(converted);
    ASSERT_TRUE(taken.open(QIODevice::WriteOnly));
    taken.write("mine");
    taken.close();
    EXPECT_EQ(errorOf(old, converted), engine::jet::kDatabaseExists);
    EXPECT_EQ(message, "Database already exists.");
    QFile kept(converted);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "mine");
    EXPECT_EQ(files(), QStringList({"coll-converted.mdb", "coll.mdb"}));
}

TEST_F(Conversion, OpenAsksThenProposesACopyBesideTheOldFile) {
    writeOld(testsupport::sampleOldCompilations(jet4::Format::Jet4));
    dialogs.answerMessage(platform::MessageAnswer::No);
    EXPECT_FALSE(shell::databaseToOpen(old, dialogs, *this));
    ASSERT_EQ(dialogs.messages().size(), 1u);
    const platform::MessageRequest& question = dialogs.messages()[0];
    EXPECT_EQ(question.text, shell::conversionQuestion(old));
    EXPECT_TRUE(question.text.contains("coll.mdb"));
    EXPECT_EQ(question.title, "Mixorama");
    EXPECT_EQ(question.icon, platform::MessageIcon::Question);
    EXPECT_EQ(question.buttons, platform::MessageButtons::YesNo);
    EXPECT_TRUE(dialogs.saveRequests().empty());

    dialogs.answerMessage(platform::MessageAnswer::Yes);  // then Cancel in the save dialog
    EXPECT_FALSE(shell::databaseToOpen(old, dialogs, *this));
    ASSERT_EQ(dialogs.saveRequests().size(), 1u);
    const platform::FileRequest& save = dialogs.saveRequests()[0];
    EXPECT_EQ(save.fileName, "coll-converted.mdb");
    EXPECT_EQ(save.initialFolder, dir.path());
    EXPECT_EQ(save.filter, "MS Access Files (*.mdb)|*.mdb");
    EXPECT_EQ(files(), QStringList({"coll.mdb"}));

    dialogs.answerMessage(platform::MessageAnswer::Yes);
    dialogs.answerFile(converted);
    EXPECT_EQ(shell::databaseToOpen(old, dialogs, *this), std::optional<QString>(converted));
    EXPECT_EQ(statusTexts.first(), "Converting database ...");
    EXPECT_TRUE(statusTexts.contains("Converting database ... 6 compilations, 300 tracks"));
    EXPECT_EQ(statusTexts.last(), shell::kStatusHint);
    EXPECT_EQ(busyCalls, QList<bool>({true, false}));
    EXPECT_EQ(testsupport::queryRaw(converted, "SELECT count(*) FROM CompilationTrack"), "300");

    // Asked again, the copy is there: refused with the engine's message.
    dialogs.answerMessage(platform::MessageAnswer::Yes);
    dialogs.answerFile(converted);
    EXPECT_FALSE(shell::databaseToOpen(old, dialogs, *this));
    EXPECT_EQ(dialogs.messages().back().text, "Database already exists.");
    EXPECT_EQ(dialogs.messages().back().icon, platform::MessageIcon::Exclamation);
}

TEST_F(Conversion, OpenPassesOtherFilesOnAndReportsADamagedOne) {
    const QString ours = dir.file("ours.mdb");
    testsupport::createCompilationDatabase(ours);
    EXPECT_EQ(shell::databaseToOpen(ours, dialogs, *this), std::optional<QString>(ours));
    jet4::writeDatabase(old, {jet4::Table("Album", {{"AlbumID", jet4::Type::Long}})});
    EXPECT_EQ(shell::databaseToOpen(old, dialogs, *this), std::optional<QString>(old));
    EXPECT_TRUE(dialogs.messages().empty());

    writeOld(testsupport::sampleOldCompilations(jet4::Format::Jet4, 10));
    QFile(old).resize(QFile(old).size() - 1);
    EXPECT_FALSE(shell::databaseToOpen(old, dialogs, *this));
    EXPECT_EQ(dialogs.lastMessageText(), "Unrecognized database format '" + old + "'.");
    EXPECT_EQ(files(), QStringList({"coll.mdb", "ours.mdb"}));
}

TEST(ConvertedCopyPath, SitsBesideTheOldFile) {
    EXPECT_EQ(shell::convertedCopyPath("/home/me/music.v2/coll.backup.mdb"),
              "/home/me/music.v2/coll.backup-converted.mdb");
    EXPECT_EQ(shell::convertedCopyPath(R"(C:\x\coll.mdb)"), R"(C:\x\coll-converted.mdb)");
}

}  // namespace
