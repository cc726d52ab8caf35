#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QStringList>

#include "engine/jet_dialect.h"
#include "engine/jet_error.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

using engine::translateJetExpression;
using engine::translateJetSql;

namespace {

// A fresh in-memory connection with the Jet functions and the track picker's source table.
class JetDialect : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(sqlite3_open(":memory:", &db_), SQLITE_OK);
        engine::registerJetFunctions(db_);
        exec(R"(CREATE TABLE TempSource (ArtistSort TEXT(50) COLLATE MIXORAMA_TEXT,
                TitleTrack TEXT(50) COLLATE MIXORAMA_TEXT, Item SMALLINT, "Index" SMALLINT,
                Length DOUBLE, Live YESNO, TitleAlbum TEXT(50) COLLATE MIXORAMA_TEXT,
                TrackTrackID INTEGER))");
        exec(R"(INSERT INTO TempSource VALUES
                ('Beatles', 'Help!', 1, 2, 139, 0, 'Help', 1),
                ('beat happening', 'Indian Summer', 1, 1, 300, -1, 'Jamboree', 2),
                ('English Beat', 'Mirror in the Bathroom', 1, 3, 0, 0, NULL, 3),
                ('Ärzte', 'Schrei 50% [live] edit', 2, 1, 250, -1, 'Live 50% [live]', 4),
                ('ärzte', 'Westerland', 2, 2, 175, 0, 'Das ist nicht die ganze Wahrheit', 5),
                ('O''Neil, Mark', 'Star * Trek?', 1, 1, NULL, 0, NULL, 6),
                ('Éric Serra', '# 1 Hit', 3, 1, 179, -1, 'Subway', 7),
                ('abba', 'Waterloo', 1, 2, 165, 0, 'Waterloo', 8),
                ('Arzt', '50% live', 1, 1, 200, 0, 'Praxis', 9),
                ('Az', 'Zeta', 1, 3, 181, 0, 'Omega', 10))");
    }
    void TearDown() override { sqlite3_close(db_); }

    void exec(const QString& sql) {
        char* message = nullptr;
        if (sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, &message) != SQLITE_OK) {
            ADD_FAILURE() << message << "\nin: " << sql.toStdString();
            sqlite3_free(message);
        }
    }

    // The rows of an SQLite statement, columns joined by "|", Null as "<null>".
    QStringList query(const QString& sql) {
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(db_, sql.toUtf8().constData(), -1, &stmt, nullptr) != SQLITE_OK) {
            ADD_FAILURE() << sqlite3_errmsg(db_) << "\nin: " << sql.toStdString();
            return {QStringLiteral("<error>")};
        }
        QStringList rows;
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            QStringList columns;
            for (int c = 0; c < sqlite3_column_count(stmt); ++c) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, c));
                columns << (text ? QString::fromUtf8(text) : QStringLiteral("<null>"));
            }
            rows << columns.join(u'|');
        }
        sqlite3_finalize(stmt);
        return rows;
    }

    QStringList jet(const QString& statement) { return query(translateJetSql(statement).sql); }

    // Ids of the source rows that meet a Jet criterion, as a find on the source would test it.
    QStringList idsWhere(const QString& criterion) {
        return query(QStringLiteral("SELECT TrackTrackID FROM TempSource WHERE ") +
                     translateJetExpression(criterion) + QStringLiteral(" ORDER BY TrackTrackID"));
    }

    // Rows compared without case where a group's representative may be any of its members.
    static QStringList folded(const QStringList& rows) {
        QStringList out;
        for (const QString& row : rows)
            out << row.toCaseFolded();
        return out;
    }

    sqlite3* db_ = nullptr;
};

using Ids = QStringList;

TEST_F(JetDialect, LikeCriteriaOfFilterAndFind) {
    EXPECT_EQ(idsWhere("ArtistSort LIKE 'Beat**'"), (Ids{"1", "2"}));
    EXPECT_EQ(idsWhere("TitleTrack LIKE '*50% [[]live]*'"), (Ids{"4"}));
    EXPECT_EQ(idsWhere("ArtistSort LIKE '*O''Neil*'"), (Ids{"6"}));
    EXPECT_EQ(idsWhere("TitleTrack LIKE '[#] 1*'"), (Ids{"7"}));
    EXPECT_EQ(idsWhere("TitleTrack Like '*[*]*[?]'"), (Ids{"6"}));
    EXPECT_EQ(idsWhere("ArtistSort Like 'b?at*'"), (Ids{"1", "2"}));
    EXPECT_EQ(idsWhere("ArtistSort Not Like '*e*'"), (Ids{"8", "9", "10"}));
    EXPECT_EQ(idsWhere("ArtistSort LIKE 'ÄRZ*'"), (Ids{"4", "5"}));
}

TEST_F(JetDialect, ComparisonCriteria) {
    EXPECT_EQ(idsWhere("Length <180 And Length > 0"), (Ids{"1", "5", "7", "8"}));
    EXPECT_EQ(idsWhere("live =True"), (Ids{"2", "4", "7"}));
    EXPECT_EQ(idsWhere("Live = False And Item >= 2"), (Ids{"5"}));
    EXPECT_EQ(idsWhere("TitleAlbum Is Null"), (Ids{"3", "6"}));
    EXPECT_EQ(idsWhere("Index =3"), (Ids{"3", "10"}));
    EXPECT_EQ(idsWhere("ArtistSort = 'ÄRZTE'"), (Ids{"4", "5"}));
    EXPECT_EQ(idsWhere("ArtistSort= 'O''Neil, Mark'"), (Ids{"6"}));
    EXPECT_EQ(idsWhere("[TitleTrack] = \"Help!\""), (Ids{"1"}));
    EXPECT_EQ(idsWhere("ArtistSort & '/' & TitleAlbum = 'abba/waterloo'"), (Ids{"8"}));
}

TEST_F(JetDialect, DateLiteralsAcrossTheCentury) {
    exec("CREATE TABLE Compilation (Name TEXT(50) COLLATE MIXORAMA_TEXT, RecDate DATETIME)");
    exec(R"(INSERT INTO Compilation VALUES ('a', '1997-01-21'), ('b', '1999-12-31'),
            ('c', '2000-01-01'), ('d', '2029-06-01'), ('e', '2001-02-03 22:30:00'), ('f', NULL))");
    auto names = [&](const QString& criterion) {
        return query("SELECT Name FROM Compilation WHERE " + translateJetExpression(criterion) +
                     " ORDER BY Name");
    };
    EXPECT_EQ(names("RecDate =#1/21/97#"), (QStringList{"a"}));
    EXPECT_EQ(names("RecDate = #1/21/1997#"), (QStringList{"a"}));
    EXPECT_EQ(names("RecDate <= #12/31/99#"), (QStringList{"a", "b"}));
    EXPECT_EQ(names("RecDate >= #1/1/00# And RecDate < #1/1/02#"), (QStringList{"c", "e"}));
    EXPECT_EQ(names("RecDate = #6/1/29#"), (QStringList{"d"}));
    EXPECT_EQ(names("RecDate = #2/3/01 22:30:00#"), (QStringList{"e"}));
    EXPECT_EQ(names("RecDate = #2/3/01 10:30 PM#"), (QStringList{"e"}));
    EXPECT_EQ(names("RecDate = #1/21/97 00:00:00#"), (QStringList{"a"}));
}

TEST_F(JetDialect, GotoListsComeBackGroupedInKeyOrder) {
    EXPECT_EQ(jet("SELECT   TempSource.Index FROM     TempSource  GROUP BY TempSource.Index;"),
              (QStringList{"1", "2", "3"}));
    EXPECT_EQ(jet("SELECT   format(TempSource.Live,'Yes/No') As Live FROM     TempSource  "
                  "GROUP BY TempSource.Live;"),
              (QStringList{"Yes", "No"}));
    EXPECT_EQ(jet("SELECT   TempSource.ArtistSort FROM     TempSource WHERE Live = True "
                  "GROUP BY TempSource.ArtistSort;"),
              (QStringList{"Ärzte", "beat happening", "Éric Serra"}));
    EXPECT_EQ(folded(jet("SELECT   TempSource.ArtistSort FROM     TempSource  "
                         "GROUP BY TempSource.ArtistSort;")),
              (QStringList{"abba", "arzt", "ärzte", "az", "beat happening", "beatles",
                           "english beat", "éric serra", "o'neil, mark"}));
    EXPECT_EQ(jet("SELECT   TempSource.TitleAlbum FROM     TempSource  "
                  "GROUP BY TempSource.TitleAlbum;")
                  .first(),
              "<null>");
}

// An index in another column order lets SQLite group in that order; Jet groups in key order.
TEST_F(JetDialect, GroupsFollowTheirKeysWhateverTheIndexes) {
    exec("CREATE INDEX ByAlbum ON TempSource (TitleAlbum, ArtistSort)");
    EXPECT_EQ(jet("SELECT TempSource.ArtistSort, TempSource.TitleAlbum FROM TempSource "
                  "WHERE TitleAlbum > 'o' GROUP BY TempSource.ArtistSort, TempSource.TitleAlbum"),
              (QStringList{"abba|Waterloo", "Arzt|Praxis", "Az|Omega", "Éric Serra|Subway"}));
}

TEST_F(JetDialect, MemoGroupedThroughMid) {
    exec(
        "CREATE TABLE Compilation (Name TEXT(50) COLLATE MIXORAMA_TEXT, Notes LONGTEXT COLLATE "
        "MIXORAMA_TEXT)");
    exec(R"(INSERT INTO Compilation VALUES ('a', 'Studio'), ('b', 'live'), ('c', 'LIVE'),
            ('d', NULL), ('e', 'Ärger'), ('f', 'ärger'), ('g', 'Zugabe'))");
    const QStringList rows =
        jet("SELECT   Mid(Compilation.Notes,1) AS Notes FROM     Compilation GROUP BY "
            "Mid(Compilation.Notes,1);");
    EXPECT_EQ(folded(rows), (QStringList{"<null>", "ärger", "live", "studio", "zugabe"}));
}

TEST_F(JetDialect, SortOrderIsCaseBlindWithAccentsBesideTheirLetters) {
    EXPECT_EQ(folded(jet("SELECT ArtistSort FROM tempsource WHERE ArtistSort < 'b' "
                         "ORDER BY ArtistSort")),
              (QStringList{"abba", "arzt", "ärzte", "ärzte", "az"}));
    // A computed term has no column collation; the sort must still ignore case.
    EXPECT_EQ(jet("SELECT Mid(ArtistSort, 1) AS A FROM TempSource WHERE ArtistSort IN "
                  "('Beatles', 'abba', 'English Beat', 'Éric Serra') ORDER BY Mid(ArtistSort, 1) "
                  "DESC"),
              (QStringList{"Éric Serra", "English Beat", "Beatles", "abba"}));
    EXPECT_EQ(jet("SELECT Mid(ArtistSort,1) AS A FROM TempSource WHERE Item = 1 AND Live = 0 "
                  "ORDER BY A, 1"),
              (QStringList{"abba", "Arzt", "Az", "Beatles", "English Beat", "O'Neil, Mark"}));
    EXPECT_EQ(jet("SELECT TrackTrackID FROM tempsource WHERE TitleAlbum Is Not Null ORDER BY "
                  "ArtistSort, TitleAlbum, Item, Index ")
                  .mid(0, 4),
              (QStringList{"8", "9", "5", "4"}));
}

TEST_F(JetDialect, FilterAndSortClausesCombine) {
    const QStringList rows =
        jet("SELECT * FROM tempsource WHERE TitleTrack LIKE '*50% [[]live]*' And Length >= 180 "
            "ORDER BY TitleTrack ASC, Item DESC");
    ASSERT_EQ(rows.size(), 1);
    EXPECT_TRUE(rows[0].startsWith("Ärzte|Schrei 50% [live] edit|"));
}

class JetDialectCompilations : public JetDialect {
  protected:
    void SetUp() override {
        JetDialect::SetUp();
        exec(R"(CREATE TABLE Compilation (CompilationID_P INTEGER PRIMARY KEY,
                Name TEXT(50) COLLATE MIXORAMA_TEXT, SumTime DOUBLE, Box TEXT(50) COLLATE MIXORAMA_TEXT))");
        exec(R"(CREATE TABLE CompilationTrack (CompilationID_F1 INTEGER, TrackNo SMALLINT,
                Track_Artist_Name TEXT(50) COLLATE MIXORAMA_TEXT, Track_Title TEXT(50) COLLATE MIXORAMA_TEXT,
                Album_Title TEXT(50) COLLATE MIXORAMA_TEXT, ArtistSort TEXT(50) COLLATE MIXORAMA_TEXT,
                Length DOUBLE, "Index" SMALLINT))");
        exec("INSERT INTO Compilation VALUES (1, 'Mix', 500, 'B1'), (2, 'Empty', 0, 'B2')");
        exec(R"(INSERT INTO CompilationTrack VALUES
                (1, 1, 'The Beatles', 'Help!', 'Help', 'Beatles', 100, 1),
                (1, 2, 'ABBA', 'Waterloo', 'Waterloo', 'abba', 200, 1),
                (1, 3, 'The Beatles', 'Yesterday', 'Help', 'Beatles', 50, 2),
                (1, 4, 'Die Ärzte', 'Westerland', 'Das ist', 'Ärzte', 120, 1),
                (1, 5, 'Die ärzte', 'Schrei', 'Die Bestie', 'ärzte', 30, 1))");
    }
};

TEST_F(JetDialectCompilations, DistinctRowPerformerSumsInGroupOrder) {
    const QStringList rows =
        jet("SELECT DISTINCTROW CompilationTrack.CompilationID_F1, CompilationTrack.ArtistSort, "
            "                   CompilationTrack.Track_Artist_Name, "
            "                   SUM(CompilationTrack.Length) as LengthSum "
            "              FROM Compilation LEFT JOIN CompilationTrack ON "
            "                   Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
            "             WHERE CompilationTrack.CompilationID_F1 = 1"
            "          GROUP BY CompilationTrack.CompilationID_F1, "
            "                   CompilationTrack.ArtistSort, CompilationTrack.Track_Artist_Name ");
    EXPECT_EQ(folded(rows), (QStringList{"1|abba|abba|200.0", "1|ärzte|die ärzte|150.0",
                                         "1|beatles|the beatles|150.0"}));
}

TEST_F(JetDialectCompilations, GroupedWithHavingIsOrderedByKeys) {
    const QStringList rows =
        jet("SELECT Compilation.CompilationID_P, Compilation.Name, "
            "       CompilationTrack.Album_Title "
            "FROM   Compilation INNER JOIN CompilationTrack ON "
            "       Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
            "GROUP BY Compilation.CompilationID_P, Compilation.Name, "
            "       CompilationTrack.Album_Title "
            "HAVING Compilation.CompilationID_P = 1");
    EXPECT_EQ(rows,
              (QStringList{"1|Mix|Das ist", "1|Mix|Die Bestie", "1|Mix|Help", "1|Mix|Waterloo"}));
}

TEST_F(JetDialectCompilations, StandardStatementsRun) {
    EXPECT_EQ(jet("SELECT Compilation.*, CompilationTrack.* "
                  "FROM   Compilation LEFT JOIN CompilationTrack ON "
                  "       Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
                  "WHERE  CompilationTrack.CompilationID_F1 = 2 ORDER BY Compilation.Name, "
                  "CompilationTrack.TrackNo ")
                  .size(),
              0);
    EXPECT_EQ(jet("SELECT CompilationTrack.ArtistSort, CompilationTrack.Index, Compilation.Name "
                  "FROM   Compilation RIGHT JOIN CompilationTrack ON "
                  "       Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
                  "ORDER BY CompilationTrack.ArtistSort, CompilationTrack.Track_Title ")
                  .first(),
              "abba|1|Mix");
    EXPECT_EQ(jet("SELECT Left(Track_Artist_Name, 3), Right(Track_Title, 4) FROM CompilationTrack "
                  "WHERE TrackNo = 2"),
              (QStringList{"ABB|rloo"}));
}

TEST_F(JetDialect, SelectIntoBuildsTheSourceTableFromNestedJoins) {
    exec("CREATE TABLE Artist (ArtistID INTEGER, Name TEXT(50) COLLATE MIXORAMA_TEXT)");
    exec(R"(CREATE TABLE Track (TrackID INTEGER, AlbumID INTEGER, ArtistSort TEXT(50),
            Title TEXT(50), Item SMALLINT, "Index" SMALLINT))");
    exec("CREATE TABLE ArtistTrackLink (ArtistID INTEGER, TrackID INTEGER)");
    exec("CREATE TABLE ArtistAlbumLink (ArtistID INTEGER, AlbumID INTEGER)");
    exec("CREATE TABLE Album (AlbumID INTEGER, Title TEXT(50), LocationID INTEGER)");
    exec("CREATE TABLE Location (LocationID INTEGER, Location TEXT(50))");
    exec("INSERT INTO Artist VALUES (1, 'ABBA'), (2, 'Benny')");
    exec(
        "INSERT INTO Track VALUES (10, 100, 'ABBA', 'SOS', 1, 2), (11, 100, 'ABBA', 'Mamma', 1, "
        "1)");
    exec("INSERT INTO ArtistTrackLink VALUES (1, 10), (1, 11), (2, 11)");
    exec("INSERT INTO ArtistAlbumLink VALUES (1, 100)");
    exec("INSERT INTO Album VALUES (100, 'Abba', NULL)");

    const engine::TranslatedSql t = translateJetSql(
        "SELECT Track.ArtistSort, Artist.Name As PerformerTrack, "
        "       Track.Title As TitleTrack, Track.Item, Track.Index, "
        "       Album.Title As TitleAlbum, Artist_1.Name As PerformerAlbum, "
        "       Location.Location "
        "INTO   TempSource2 "
        "FROM   ((((Artist INNER JOIN (Track INNER JOIN ArtistTrackLink ON "
        "       Track.TrackID = ArtistTrackLink.TrackID) ON "
        "       Artist.ArtistID = ArtistTrackLink.ArtistID) INNER JOIN Album ON "
        "       Track.AlbumID = Album.AlbumID) INNER JOIN ArtistAlbumLink ON "
        "       Album.AlbumID = ArtistAlbumLink.AlbumID) INNER JOIN "
        "       Artist AS Artist_1 ON ArtistAlbumLink.ArtistID = Artist_1.ArtistID) "
        "       LEFT JOIN Location ON Album.LocationID = Location.LocationID "
        "       ORDER BY Track.ArtistSort, Album.Title, Track.Item, "
        "       Track.Index");
    EXPECT_EQ(t.intoTable, "TempSource2");
    EXPECT_FALSE(t.returnsRows);
    exec("CREATE TABLE TempSource2 AS " + t.sql);
    EXPECT_EQ(query("SELECT * FROM TempSource2 ORDER BY \"Index\", PerformerTrack"),
              (QStringList{"ABBA|ABBA|Mamma|1|1|Abba|ABBA|<null>",
                           "ABBA|Benny|Mamma|1|1|Abba|ABBA|<null>",
                           "ABBA|ABBA|SOS|1|2|Abba|ABBA|<null>"}));
}

TEST_F(JetDialect, LiteralTextIsNeverRewritten) {
    EXPECT_EQ(jet("SELECT 'True & #1/1/00# [x] \"y\" DISTINCTROW Index;', \"It's \"\"q\"\"\";"),
              (QStringList{"True & #1/1/00# [x] \"y\" DISTINCTROW Index;|It's \"q\""}));
    EXPECT_EQ(jet("SELECT 'a' & \"b\" & 1, 2-True, True, No"), (QStringList{"ab1|3|-1|0"}));
    EXPECT_EQ(idsWhere("TitleTrack = 'Star * Trek?' Or TitleTrack = '# 1 Hit'"), (Ids{"6", "7"}));
}

TEST_F(JetDialect, ReportsWhetherAStatementReturnsRows) {
    EXPECT_TRUE(translateJetSql("SELECT * FROM TempSource;").returnsRows);
    EXPECT_FALSE(translateJetSql("UPDATE TempSource SET Item = 1").returnsRows);
    EXPECT_TRUE(translateJetSql("SELECT * FROM TempSource").intoTable.isEmpty());
    EXPECT_EQ(translateJetSql("SELECT * INTO [Copy Of] FROM TempSource").intoTable, "Copy Of");
}

TEST_F(JetDialect, DataDefinitionKeepsItsKeywords) {
    exec(translateJetSql("CREATE INDEX ByIndex ON TempSource (Index)").sql);
    exec(translateJetSql("UPDATE TempSource SET Index = Index + 10 WHERE Live = True").sql);
    EXPECT_EQ(idsWhere("Index > 10"), (Ids{"2", "4", "7"}));
    exec(translateJetSql("DROP INDEX ByIndex;").sql);
}

TEST_F(JetDialect, TextLiteralsCompareCaseBlindInStatementsAndViews) {
    EXPECT_EQ(jet("SELECT TrackTrackID FROM TempSource WHERE Mid(TitleAlbum, 1) = 'WATERLOO'"),
              (QStringList{"8"}));
    exec(translateJetSql("CREATE VIEW queryNavigate AS SELECT * FROM TempSource WHERE "
                         "UCase(ArtistSort) & '' = 'beatles'")
             .sql);
    EXPECT_EQ(query("SELECT TrackTrackID FROM queryNavigate"), (QStringList{"1"}));
    exec(translateJetSql("CREATE TABLE Lst (Format2_P TEXT(50) DEFAULT 'CD')").sql);
    exec("INSERT INTO Lst DEFAULT VALUES");
    EXPECT_EQ(query("SELECT Format2_P FROM Lst WHERE Format2_P = 'cd'"), (QStringList{}));
}

void expectSyntaxError(const QString& jet) {
    try {
        translateJetSql(jet);
        ADD_FAILURE() << "accepted: " << jet.toStdString();
    } catch (const engine::JetError& e) {
        EXPECT_EQ(e.number(), engine::jet::kSyntaxError) << jet.toStdString();
    }
}

TEST(JetDialectErrors, UnterminatedAndMalformedLiteralsAreRefused) {
    expectSyntaxError("SELECT * FROM TempSource WHERE ArtistSort = 'O'Neil'");
    expectSyntaxError("SELECT * FROM TempSource WHERE ArtistSort = \"abc");
    expectSyntaxError("SELECT [Index FROM TempSource");
    expectSyntaxError("SELECT * FROM Compilation WHERE RecDate = #1/21/97");
    expectSyntaxError("SELECT * FROM Compilation WHERE RecDate = #13/45/97#");
    expectSyntaxError("SELECT * FROM Compilation WHERE RecDate = #2/30/2000#");
    expectSyntaxError("SELECT * FROM Compilation WHERE RecDate = #1/21#");
    expectSyntaxError("SELECT * FROM Compilation WHERE RecDate = #1/21/97 25:00#");
    EXPECT_THROW(translateJetExpression("ArtistSort LIKE 'Beat**"), engine::JetError);
}

TEST(JetDialectDates, IsoDateText) {
    EXPECT_EQ(engine::isoDateText(QDate(1997, 1, 21)), "1997-01-21");
    EXPECT_EQ(engine::isoDateText(QDateTime(QDate(2000, 1, 1), QTime(0, 0))), "2000-01-01");
    EXPECT_EQ(engine::isoDateText(QDateTime(QDate(2000, 1, 1), QTime(9, 5, 7))),
              "2000-01-01 09:05:07");
    EXPECT_EQ(engine::isoDateText(QDate()), "");
}

}  // namespace
