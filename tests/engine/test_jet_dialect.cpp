// Jet statements and criteria translated for SQLite and run there, as tables of cases.
#include <gtest/gtest.h>

#include <QStringList>

#include "engine/jet_dialect.h"
#include "engine/jet_error.h"
#include "support/databases.h"

using engine::translateJetExpression;
using engine::translateJetSql;

namespace {

std::string joined(const QStringList& rows) {
    return rows.join(" / ").toStdString();
}

// The track picker's source table, compilations with their tracks, and dated and noted rows.
class JetDialect : public ::testing::Test {
  protected:
    void SetUp() override {
        db.exec(R"(CREATE TABLE TempSource (ArtistSort TEXT(50) COLLATE MIXORAMA_TEXT,
                TitleTrack TEXT(50) COLLATE MIXORAMA_TEXT, Item SMALLINT, "Index" SMALLINT,
                Length DOUBLE, Live YESNO, TitleAlbum TEXT(50) COLLATE MIXORAMA_TEXT,
                TrackTrackID INTEGER);
            INSERT INTO TempSource VALUES
                ('Beatles', 'Help!', 1, 2, 139, 0, 'Help', 1),
                ('beat happening', 'Indian Summer', 1, 1, 300, -1, 'Jamboree', 2),
                ('English Beat', 'Mirror in the Bathroom', 1, 3, 0, 0, NULL, 3),
                ('Ärzte', 'Schrei 50% [live] edit', 2, 1, 250, -1, 'Live 50% [live]', 4),
                ('ärzte', 'Westerland', 2, 2, 175, 0, 'Das ist nicht die ganze Wahrheit', 5),
                ('O''Neil, Mark', 'Star * Trek?', 1, 1, NULL, 0, NULL, 6),
                ('Éric Serra', '# 1 Hit', 3, 1, 179, -1, 'Subway', 7),
                ('abba', 'Waterloo', 1, 2, 165, 0, 'Waterloo', 8),
                ('Arzt', '50% live', 1, 1, 200, 0, 'Praxis', 9),
                ('Az', 'Zeta', 1, 3, 181, 0, 'Omega', 10);
            -- An index in another column order lets SQLite group in that order; Jet groups
            -- in key order whatever the indexes.
            CREATE INDEX ByAlbum ON TempSource (TitleAlbum, ArtistSort);
            CREATE TABLE Compilation (CompilationID_P INTEGER PRIMARY KEY,
                Name TEXT(50) COLLATE MIXORAMA_TEXT, SumTime DOUBLE,
                Box TEXT(50) COLLATE MIXORAMA_TEXT);
            CREATE TABLE CompilationTrack (CompilationID_F1 INTEGER, TrackNo SMALLINT,
                Track_Artist_Name TEXT(50) COLLATE MIXORAMA_TEXT,
                Track_Title TEXT(50) COLLATE MIXORAMA_TEXT,
                Album_Title TEXT(50) COLLATE MIXORAMA_TEXT,
                ArtistSort TEXT(50) COLLATE MIXORAMA_TEXT, Length DOUBLE, "Index" SMALLINT);
            INSERT INTO Compilation VALUES (1, 'Mix', 500, 'B1'), (2, 'Empty', 0, 'B2');
            INSERT INTO CompilationTrack VALUES
                (1, 1, 'The Beatles', 'Help!', 'Help', 'Beatles', 100, 1),
                (1, 2, 'ABBA', 'Waterloo', 'Waterloo', 'abba', 200, 1),
                (1, 3, 'The Beatles', 'Yesterday', 'Help', 'Beatles', 50, 2),
                (1, 4, 'Die Ärzte', 'Westerland', 'Das ist', 'Ärzte', 120, 1),
                (1, 5, 'Die ärzte', 'Schrei', 'Die Bestie', 'ärzte', 30, 1);
            CREATE TABLE Dated (Name TEXT(50) COLLATE MIXORAMA_TEXT, RecDate DATETIME);
            INSERT INTO Dated VALUES ('a', '1997-01-21'), ('b', '1999-12-31'),
                ('c', '2000-01-01'), ('d', '2029-06-01'), ('e', '2001-02-03 22:30:00'), ('f', NULL);
            CREATE TABLE Noted (Name TEXT(50) COLLATE MIXORAMA_TEXT,
                                Notes LONGTEXT COLLATE MIXORAMA_TEXT);
            INSERT INTO Noted VALUES ('a', 'Studio'), ('b', 'live'), ('c', 'LIVE'),
                ('d', NULL), ('e', 'Ärger'), ('f', 'ärger'), ('g', 'Zugabe'))");
    }

    QStringList jet(const QString& statement) { return db.lines(translateJetSql(statement).sql); }

    testsupport::SqliteFile db{":memory:"};
};

// Criteria of the filter and find dialogs, with the first column of the rows that meet them in
// rowid order. The tables keep two cases to a line.
TEST_F(JetDialect, CriteriaMatchTheRightRows) {
    const auto expectRows = [&](const char* table, const char* key,
                                std::initializer_list<std::pair<const char*, QStringList>> cases) {
        for (const auto& [criterion, rows] : cases) {
            const QString sql = QStringLiteral("SELECT %1 FROM %2 WHERE %3 ORDER BY rowid")
                                    .arg(key, table, translateJetExpression(criterion));
            EXPECT_EQ(joined(db.lines(sql)), joined(rows)) << criterion;
        }
    };
    // clang-format off
    expectRows("TempSource", "TrackTrackID", {
        {"ArtistSort LIKE 'Beat**'", {"1", "2"}},   {"ArtistSort Not Like '*e*'", {"8", "9", "10"}},
        {"Length <180 And Length > 0", {"1", "5", "7", "8"}},
        {"live =True", {"2", "4", "7"}},            {"Live = False And Item >= 2", {"5"}},
        {"TitleAlbum Is Null", {"3", "6"}},         {"Index =3", {"3", "10"}},
        {"ArtistSort = 'ÄRZTE'", {"4", "5"}},       {"ArtistSort= 'O''Neil, Mark'", {"6"}},
        {"[TitleTrack] = \"Help!\"", {"1"}},
        {"ArtistSort & '/' & TitleAlbum = 'abba/waterloo'", {"8"}},
        {"TitleTrack = 'Star * Trek?' Or TitleTrack = '# 1 Hit'", {"6", "7"}}});
    expectRows("Dated", "Name", {
        {"RecDate =#1/21/97#", {"a"}},              {"RecDate = #1/21/1997#", {"a"}},
        {"RecDate <= #12/31/99#", {"a", "b"}},      {"RecDate = #6/1/29#", {"d"}},
        {"RecDate >= #1/1/00# And RecDate < #1/1/02#", {"c", "e"}},
        {"RecDate = #2/3/01 22:30:00#", {"e"}},     {"RecDate = #2/3/01 10:30 PM#", {"e"}},
        {"RecDate = #1/21/97 00:00:00#", {"a"}}});
    // clang-format on
}

struct Query {
    const char* jet;
    QStringList rows;      // columns joined by "|", Null as "<null>"
    bool anyCase = false;  // a group's representative may be any of its members
};

// Goto lists, groups, sorts and the compilation lists' statements: Jet groups and sorts in key
// order, without regard to case, accented letters beside their base letters.
TEST_F(JetDialect, StatementsReturnTheirRowsInJetsOrder) {
    const Query queries[] = {
        {"SELECT   TempSource.Index FROM     TempSource  GROUP BY TempSource.Index;",
         {"1", "2", "3"}},
        {"SELECT   format(TempSource.Live,'Yes/No') As Live FROM     TempSource  "
         "GROUP BY TempSource.Live;",
         {"Yes", "No"}},
        {"SELECT   TempSource.ArtistSort FROM     TempSource WHERE Live = True "
         "GROUP BY TempSource.ArtistSort;",
         {"Ärzte", "beat happening", "Éric Serra"}},
        {"SELECT   TempSource.ArtistSort FROM     TempSource  GROUP BY TempSource.ArtistSort;",
         {"abba", "arzt", "ärzte", "az", "beat happening", "beatles", "english beat", "éric serra",
          "o'neil, mark"},
         true},
        {"SELECT   TempSource.TitleAlbum FROM     TempSource  GROUP BY TempSource.TitleAlbum;",
         {"<null>", "Das ist nicht die ganze Wahrheit", "Help", "Jamboree", "Live 50% [live]",
          "Omega", "Praxis", "Subway", "Waterloo"}},
        {"SELECT TempSource.ArtistSort, TempSource.TitleAlbum FROM TempSource "
         "WHERE TitleAlbum > 'o' GROUP BY TempSource.ArtistSort, TempSource.TitleAlbum",
         {"abba|Waterloo", "Arzt|Praxis", "Az|Omega", "Éric Serra|Subway"}},
        {"SELECT   Mid(Noted.Notes,1) AS Notes FROM     Noted GROUP BY Mid(Noted.Notes,1);",
         {"<null>", "ärger", "live", "studio", "zugabe"},
         true},
        {"SELECT ArtistSort FROM tempsource WHERE ArtistSort < 'b' ORDER BY ArtistSort",
         {"abba", "arzt", "ärzte", "ärzte", "az"},
         true},
        // A computed term has no column collation; the sort must still ignore case.
        {"SELECT Mid(ArtistSort, 1) AS A FROM TempSource WHERE ArtistSort IN "
         "('Beatles', 'abba', 'English Beat', 'Éric Serra') ORDER BY Mid(ArtistSort, 1) DESC",
         {"Éric Serra", "English Beat", "Beatles", "abba"}},
        {"SELECT Mid(ArtistSort,1) AS A FROM TempSource WHERE Item = 1 AND Live = 0 "
         "ORDER BY A, 1",
         {"abba", "Arzt", "Az", "Beatles", "English Beat", "O'Neil, Mark"}},
        {"SELECT TrackTrackID FROM tempsource WHERE TitleAlbum Is Not Null ORDER BY "
         "ArtistSort, TitleAlbum, Item, Index ",
         {"8", "9", "5", "4", "10", "2", "1", "7"}},
        {"SELECT DISTINCTROW CompilationTrack.CompilationID_F1, CompilationTrack.ArtistSort, "
         "CompilationTrack.Track_Artist_Name, SUM(CompilationTrack.Length) as LengthSum "
         "FROM Compilation LEFT JOIN CompilationTrack ON "
         "Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
         "WHERE CompilationTrack.CompilationID_F1 = 1 GROUP BY CompilationTrack.CompilationID_F1, "
         "CompilationTrack.ArtistSort, CompilationTrack.Track_Artist_Name ",
         {"1|abba|abba|200.0", "1|ärzte|die ärzte|150.0", "1|beatles|the beatles|150.0"},
         true},
        {"SELECT Compilation.CompilationID_P, Compilation.Name, CompilationTrack.Album_Title "
         "FROM Compilation INNER JOIN CompilationTrack ON "
         "Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
         "GROUP BY Compilation.CompilationID_P, Compilation.Name, CompilationTrack.Album_Title "
         "HAVING Compilation.CompilationID_P = 1",
         {"1|Mix|Das ist", "1|Mix|Die Bestie", "1|Mix|Help", "1|Mix|Waterloo"}},
        {"SELECT Compilation.*, CompilationTrack.* FROM Compilation LEFT JOIN CompilationTrack "
         "ON Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
         "WHERE CompilationTrack.CompilationID_F1 = 2 ORDER BY Compilation.Name, "
         "CompilationTrack.TrackNo ",
         {}},
        {"SELECT CompilationTrack.ArtistSort, CompilationTrack.Index, Compilation.Name "
         "FROM Compilation RIGHT JOIN CompilationTrack ON "
         "Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
         "ORDER BY CompilationTrack.ArtistSort, CompilationTrack.Track_Title ",
         {"abba|1|Mix", "ärzte|1|Mix", "Ärzte|1|Mix", "Beatles|1|Mix", "Beatles|2|Mix"}},
        {"SELECT Left(Track_Artist_Name, 3), Right(Track_Title, 4) FROM CompilationTrack "
         "WHERE TrackNo = 2",
         {"ABB|rloo"}},
        // Literal text is never rewritten; Jet's constants and & are.
        {"SELECT 'True & #1/1/00# [x] \"y\" DISTINCTROW Index;', \"It's \"\"q\"\"\";",
         {"True & #1/1/00# [x] \"y\" DISTINCTROW Index;|It's \"q\""}},
        {"SELECT 'a' & \"b\" & 1, 2-True, True, No", {"ab1|3|-1|0"}},
        {"SELECT TrackTrackID FROM TempSource WHERE Mid(TitleAlbum, 1) = 'WATERLOO'", {"8"}},
    };
    for (const Query& q : queries) {
        QStringList rows = jet(q.jet);
        QStringList expected = q.rows;
        if (q.anyCase) {
            for (QStringList* list : {&rows, &expected}) {
                for (QString& row : *list)
                    row = row.toCaseFolded();
            }
        }
        EXPECT_EQ(joined(rows), joined(expected)) << q.jet;
    }
}

// Data definition keeps its keywords; text literals in views compare without case, a column's
// default stays as written.
TEST_F(JetDialect, StatementsThatChangeTheSchema) {
    db.exec(translateJetSql("CREATE INDEX ByIndex ON TempSource (Index)").sql);
    db.exec(translateJetSql("UPDATE TempSource SET Index = Index + 10 WHERE Live = True").sql);
    EXPECT_EQ(db.lines("SELECT TrackTrackID FROM TempSource WHERE \"Index\" > 10 ORDER BY 1"),
              (QStringList{"2", "4", "7"}));
    db.exec(translateJetSql("DROP INDEX ByIndex;").sql);
    db.exec(translateJetSql("CREATE VIEW queryNavigate AS SELECT * FROM TempSource WHERE "
                            "UCase(ArtistSort) & '' = 'beatles'")
                .sql);
    EXPECT_EQ(db.lines("SELECT TrackTrackID FROM queryNavigate"), QStringList{"1"});
    db.exec(translateJetSql("CREATE TABLE Lst (Format2_P TEXT(50) DEFAULT 'CD')").sql);
    db.exec("INSERT INTO Lst DEFAULT VALUES");
    EXPECT_EQ(db.lines("SELECT Format2_P FROM Lst WHERE Format2_P = 'cd'"), QStringList{});
}

TEST(JetDialectErrors, UnterminatedAndMalformedLiteralsAreRefused) {
    for (const char* jet :
         {"SELECT * FROM TempSource WHERE ArtistSort = 'O'Neil'",
          "SELECT * FROM TempSource WHERE ArtistSort = \"abc", "SELECT [Index FROM TempSource",
          "SELECT * FROM Compilation WHERE RecDate = #1/21/97",
          "SELECT * FROM Compilation WHERE RecDate = #13/45/97#",
          "SELECT * FROM Compilation WHERE RecDate = #2/30/2000#",
          "SELECT * FROM Compilation WHERE RecDate = #1/21#",
          "SELECT * FROM Compilation WHERE RecDate = #1/21/97 25:00#"}) {
        try {
            translateJetSql(jet);
            ADD_FAILURE() << "accepted: " << jet;
        } catch (const engine::JetError& e) {
            EXPECT_EQ(e.number(), engine::jet::kSyntaxError) << jet;
        }
    }
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
