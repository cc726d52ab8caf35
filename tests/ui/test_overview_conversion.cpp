// Opening an Access compilation database of an earlier version, and loads that fail half-way.
#include <QDir>
#include <QFile>

#include "access/access_reader.h"
#include "overview_fixture.h"
#include "support/old_compilations.h"

namespace {

class OverviewConversion : public OverviewFixture {
  protected:
    void SetUp() override {
        OverviewFixture::SetUp();
        accessfile::installAccessReader();
        testsupport::writeOldCompilationDatabase(
            old, testsupport::sampleOldCompilations(jet4::Format::Jet4));
        before = testsupport::fileDigest(old);
    }
    void openOld(platform::MessageAnswer answer) {
        dialogs.answerFile(old);
        dialogs.answerMessage(answer);
        if (answer == platform::MessageAnswer::Yes)
            dialogs.answerFile(converted);
        window->toolBar()->clickTool("ID_OpenFile");
    }
    QStringList files() const { return QDir(dir.path()).entryList(QDir::Files); }
    const QString old = dir.file("coll.mdb");
    const QString converted = dir.file("coll-converted.mdb");
    QByteArray before;
};

TEST_F(OverviewConversion, YesSavesTheProposedCopyAndOpensIt) {
    openOld(platform::MessageAnswer::Yes);
    ASSERT_EQ(dialogs.saveRequests().size(), 1u);
    EXPECT_EQ(dialogs.saveRequests()[0].fileName, "coll-converted.mdb");
    EXPECT_EQ(dialogs.saveRequests()[0].initialFolder, dir.path());
    EXPECT_EQ(window->windowTitle(), "Overview");
    EXPECT_EQ(window->state().databasePath, converted);
    EXPECT_EQ(window->grid()->model()->rowCount(), 6);
    EXPECT_EQ(window->statusBarPanels()->panelText(1), "Database " + converted);
    EXPECT_EQ(window->statusBarPanels()->panelText(2), "C 6    List 6");
    EXPECT_EQ(currentName(), "Beatles Best");
    EXPECT_EQ(testsupport::fileDigest(old), before);
    EXPECT_FALSE(processHoldsFile(old));
}

TEST_F(OverviewConversion, NoOpensNothingAndWritesNothing) {
    openOld(platform::MessageAnswer::No);
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Question);
    EXPECT_TRUE(dialogs.saveRequests().empty());
    expectClosedState();
    EXPECT_EQ(files(), QStringList({"coll.mdb"}));
    EXPECT_EQ(testsupport::fileDigest(old), before);
}

TEST_F(OverviewConversion, ADamagedOldFileIsReportedAndLeavesNothingBehind) {
    // The definition of CompilationTrack (page 4) unreadable: the tables list, their rows do not.
    QFile file(old);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(4 * 4096));
    file.write(QByteArray(4096, '\xff'));
    file.close();
    before = testsupport::fileDigest(old);

    openOld(platform::MessageAnswer::Yes);
    ASSERT_EQ(dialogs.messages().size(), 2u);
    EXPECT_EQ(dialogs.messages()[1].text,
              "'coll.mdb' could not be converted; no new database was written.\r\n"
              "Unrecognized database format '" +
                  old + "'.");
    EXPECT_EQ(dialogs.messages()[1].icon, platform::MessageIcon::Exclamation);
    expectClosedState();
    EXPECT_EQ(files(), QStringList({"coll.mdb"}));
    EXPECT_EQ(testsupport::fileDigest(old), before);
}

using OverviewLoadFailure = OverviewFixture;

TEST_F(OverviewLoadFailure, AFailedStepLeavesTheWindowClosedWithNothingOpen) {
    // The five tables, but "compilation" cannot run: Compilation has no RecDate.
    const QString path = dir.file("broken.mdb");
    testsupport::execRaw(
        path,
        "CREATE TABLE Compilation (CompilationID_P INTEGER PRIMARY KEY, Name TEXT, "
        "SumTrack INTEGER, SumTime INTEGER, Manufacturer TEXT, Format TEXT, "
        "C_Length INTEGER, Box TEXT, CoverMemo LONGTEXT, Notes LONGTEXT);"
        "CREATE TABLE CompilationTrack (CompilationID_F1 INTEGER);"
        "CREATE TABLE LstFormat (Format2_P TEXT);"
        "CREATE TABLE LstLength (Length_P INTEGER);"
        "CREATE TABLE LstManufacturer (Manufacturer_P TEXT);");
    openThroughToolbar(path);
    expectClosedState();
    EXPECT_FALSE(processHoldsFile(path));

    // The window is as good as new: the next database opens.
    openThroughToolbar(makeDatabase("good.mdb", "('Only One', 'Box 1', 0, 0, 'MD', 74, NULL)"));
    EXPECT_EQ(window->windowTitle(), "Overview");
    EXPECT_EQ(window->grid()->model()->rowCount(), 1);
}

}  // namespace
