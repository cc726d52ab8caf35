// Deeply nested statements end in a clear error, never in a crash; below the limit they run.
#include "engine/jet_clauses.h"
#include "engine/jet_dialect.h"
#include "engine/sqlite_statement.h"
#include "engine_fixture.h"

namespace {

constexpr int kTooComplex = engine::jet::kQueryTooComplex;
constexpr int kLimit = engine::kMaxJetNesting;

// The number of the error `action` throws, its description checked when it is 3360.
int errorOf(const std::function<void()>& action) {
    QString description;
    const int number = errorNumber(action, &description);
    if (number == kTooComplex) {
        EXPECT_EQ(description, "Query is too complex.");
    }
    return number;
}

QString repeated(const char* piece, int times) {
    return QString(piece).repeated(times);
}

// "SELECT " and `depth` parentheses around 1.
QString nestedOne(int depth) {
    return "SELECT " + repeated("(", depth) + "1" + repeated(")", depth);
}

TEST(DeepNestingTranslation, NestingBeyondTheLimitIsRefused) {
    EXPECT_EQ(errorOf([] { engine::translateJetSql("SELECT " + repeated("(", 30000)); }),
              kTooComplex);
    // Unmatched ")" do not count against later "(".
    EXPECT_EQ(engine::translateJetSql("SELECT 1" + repeated(")", 10) + nestedOne(kLimit)).sql,
              "SELECT 1" + repeated(")", 10) + nestedOne(kLimit));
}

TEST(DeepNestingTranslation, TheClausesPassTakesAnyDepthWithoutRecursion) {
    // Far deeper than a stack of recursive calls would take; the pass itself has no limit.
    const QString deep = "SELECT " + repeated("(", 100000) + "a" + repeated(")", 99999);
    const engine::JetTokens tokens = engine::tokenizeJetSql(deep);
    EXPECT_EQ(engine::renderSqliteSql(engine::arrangeGroupingAndOrder(tokens)), deep);
    const QString grouped = repeated("(SELECT a FROM t GROUP BY a HAVING a IN ", 20000);
    const QString arranged =
        engine::renderSqliteSql(engine::arrangeGroupingAndOrder(engine::tokenizeJetSql(grouped)));
    EXPECT_EQ(arranged.count("ORDER BY a COLLATE MIXORAMA_TEXT"), 20000);
}

// Every level copies its group key, which holds all the deeper levels, into its ORDER BY: the
// copies cannot multiply the statement past the limit. Nested levels keep their own clauses.
TEST(DeepNestingTranslation, GroupKeysAreCopiedPerLevel) {
    auto groupedInKeys = [](int levels) {
        return "SELECT a FROM t GROUP BY " + repeated("(SELECT a FROM t GROUP BY ", levels) + "a" +
               repeated(")", levels);
    };
    EXPECT_EQ(errorOf([&] { engine::translateJetSql(groupedInKeys(40)); }), kTooComplex);
    EXPECT_NO_THROW(engine::translateJetSql(groupedInKeys(3)));
    const std::pair<QString, QString> translations[] = {
        {groupedInKeys(1),
         "SELECT a FROM t GROUP BY (SELECT a FROM t GROUP BY a COLLATE MIXORAMA_TEXT ORDER BY a "
         "COLLATE MIXORAMA_TEXT) COLLATE MIXORAMA_TEXT ORDER BY (SELECT a FROM t GROUP BY a "
         "COLLATE MIXORAMA_TEXT ORDER BY a COLLATE MIXORAMA_TEXT) COLLATE MIXORAMA_TEXT"},
        {"SELECT x FROM ((SELECT ArtistSort AS x FROM TempSource GROUP BY ArtistSort LIMIT 2)) "
         "ORDER BY x DESC, 1",
         "SELECT x FROM ((SELECT ArtistSort AS x FROM TempSource GROUP BY ArtistSort COLLATE "
         "MIXORAMA_TEXT ORDER BY ArtistSort COLLATE MIXORAMA_TEXT LIMIT 2)) ORDER BY x COLLATE "
         "MIXORAMA_TEXT DESC, 1"},
        {"SELECT a FROM t ORDER BY Mid(a, (1)) ASC , b COLLATE BINARY, (SELECT c FROM u ORDER BY "
         "c)",
         "SELECT a FROM t ORDER BY Mid(a, (1)) COLLATE MIXORAMA_TEXT ASC , b COLLATE BINARY, "
         "(SELECT c FROM u ORDER BY c COLLATE MIXORAMA_TEXT) COLLATE MIXORAMA_TEXT"}};
    for (const auto& [jet, sql] : translations)
        EXPECT_EQ(engine::translateJetSql(jet).sql, sql);
}

TEST(DeepNestingAtSqlite, SqlitesOwnNestingLimitsGiveTheSameError) {
    const testsupport::SqliteFile file(":memory:");
    // Within the translator's limit, but deeper than SQLite's parser takes nested calls.
    const QString calls = "SELECT " + repeated("abs(", kLimit) + "1" + repeated(")", kLimit);
    EXPECT_EQ(errorOf([&] { engine::Statement(file.db(), engine::translateJetSql(calls).sql); }),
              kTooComplex);
}

using DeepNestingPaths = EngineFixture;

// Every path takes the deepest nesting allowed and refuses one level more (the translator's own
// limit, for statements and criteria alike).
TEST_F(DeepNestingPaths, TheLimitHoldsInEveryPath) {
    engine::Recordset compilations = db.openRecordset("Compilation");
    const std::function<void(int)> paths[] = {
        [&](int depth) {
            EXPECT_EQ(db.openRecordset(nestedOne(depth) + " AS N").value("N").toInt(), 1);
        },
        [&](int depth) { EXPECT_EQ(db.execute(nestedOne(depth) + " AS N INTO [Deep Copy]"), 1); },
        [&](int depth) {
            db.createQueryDef("queryDeep", nestedOne(depth) + " AS N");
            EXPECT_EQ(db.openRecordset("queryDeep").value("N").toInt(), 1);
        },
        [&](int depth) {
            compilations.findFirst(repeated("(", depth) + "Name = 'Zappa'" + repeated(")", depth));
            EXPECT_EQ(compilations.value("Name").toString(), "Zappa");
        },
    };
    for (size_t i = 0; i < std::size(paths); ++i)
        EXPECT_EQ(errorOf([&] { paths[i](kLimit + 1); }), kTooComplex) << "path " << i;
    EXPECT_FALSE(db.hasTable("Deep Copy"));
    EXPECT_TRUE(db.queryDefNames().isEmpty());
    for (size_t i = 0; i < std::size(paths); ++i)
        EXPECT_EQ(errorOf([&] { paths[i](kLimit); }), 0) << "path " << i;
}

}  // namespace
