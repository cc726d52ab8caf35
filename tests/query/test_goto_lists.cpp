#include <gtest/gtest.h>

#include <map>

#include "engine/recordset.h"
#include "query/field_values.h"
#include "query/goto_find.h"
#include "query/goto_fixture.h"
#include "query/goto_lists.h"

namespace {

using query::GotoLists;

// A goto list: the field (a source field when filter is set, else a compilation field), its
// entries, and what it offers: t text comparisons, n number comparisons, h those and the input
// hint as tooltip, y only "=", - nothing.
using ListCase = std::tuple<const char*, const char*, const char*, char>;

const ListCase kLists[] = {
    {"ArtistSort", "", "B*at [Test]|beat happening|Beatles, The|O'Neil, Sinead|Zappa, Frank", 't'},
    {"ArtistSort", "WHERE Live = True", "beat happening|Beatles, The", 't'},
    {"Length", "", "00:00:00|00:02:05|00:02:40|00:03:25|00:04:20|00:05:00", 'h'},
    {"live", "", "Yes|No", 'y'},
    {"Location", "", "", '-'},
    {"C_Name", nullptr, "abba hits|Beatles Best|O'Neil Mix|Zappa", 't'},
    {"C_Notes", nullptr, "first|Rock'n'Roll", 't'},
    {"RecDate", nullptr, "21.01.97|31.12.99|01.01.00", 'h'},
    {"C_SumTime", nullptr, "00:00:00|00:02:50|00:06:40", 'h'},
    {"C_Length", nullptr, "74|80|90", 'n'},
    {"Manufacturer", nullptr, "", 't'},
};

using GotoListTest = GotoFixture;

TEST_F(GotoListTest, EachFieldListsItsDistinctValuesAsItsKindShowsThem) {
    const QStringList number{"=", ">=", ">", "<=", "<", "<>", "Is Null", "Is Not Null"};
    const QStringList text{"Starts", "Contains", "Like", "Not Like", "Is Null", "Is Not Null"};
    EXPECT_EQ(query::gotoFieldForColumn("performertrack"), "ArtistSort");  // by the sort names
    EXPECT_EQ(query::gotoFieldForColumn("PerformerAlbum"), "AlbumArtistSort");
    for (const auto& [field, filter, entries, offers] : kLists) {
        SCOPED_TRACE(field);
        const GotoLists lists = filter ? query::fillSourceGotoList(db, field, filter, kInputHint)
                                       : query::fillCompilationGotoList(db, field, kInputHint);
        EXPECT_EQ(lists.entries.join("|").toLower(), QString(entries).toLower());
        EXPECT_EQ(lists.count, lists.entries.size());
        const std::map<char, QStringList> offered{
            {'t', text}, {'n', number}, {'h', number}, {'y', {"="}}, {'-', {}}};
        EXPECT_EQ(lists.comparisons, offered.at(offers));
        EXPECT_EQ(lists.tooltip, offers == 'h' ? kInputHint : QString());
    }
    engine::Recordset prices = db.openRecordset("SELECT 3 AS Price FROM Compilation");
    const GotoLists lists = query::fillGotoList("Price", query::ValueKind::Currency, prices, "");
    EXPECT_TRUE(lists.entries.value(3).contains("3.00")) << lists.entries.join('|').toStdString();
}

// Escaped into a pattern, every text finds the performers that hold it and nothing else,
// whatever its quotes, brackets and wildcards.
TEST_F(GotoListTest, AnEscapedTextMatchesItselfLiterally) {
    const QStringList performers =
        values("SELECT ArtistSort FROM TempSource", "ArtistSort").split('|');
    for (const QString& text : performers + QStringList{"[Test]", "B?at", "*", "'", "O'"}) {
        const QString pattern = query::escapeSql(query::EscapeFor::TextInPattern, text);
        EXPECT_EQ(values("SELECT * FROM TempSource WHERE ArtistSort LIKE '*" + pattern + "*'",
                         "ArtistSort"),
                  performers.filter(text, Qt::CaseInsensitive).join('|'));
    }
}

class GotoFindTest : public GotoFixture {
  protected:
    // Clicks find buttons in order on the same record set, as a user would. A click is
    // "mode|comparison|typed|field"; its outcome "criterion|goto text after|key of the row
    // landed on|message shown" with an empty criterion where nothing was found, no message part
    // where none is shown and "*" for the engine's own.
    void run(engine::Recordset& rows, const QString& keyField,
             std::initializer_list<std::pair<QString, QString>> clicks) {
        for (const auto& [click, outcome] : clicks) {
            SCOPED_TRACE(click.toStdString());
            const QStringList in = click.split('|'), out = outcome.split('|');
            dialogs.clear();
            QString text = in[2];
            const auto criterion =
                query::findInGotoList(in[0].toInt(), in[1], text, rows, in[3], dialogs);
            EXPECT_EQ(criterion.value_or(QString()), out[0]);
            EXPECT_EQ(text, out[1]);
            EXPECT_EQ(rows.value(keyField).toString(), out[2]);
            ASSERT_EQ(dialogs.messages().size(), out.size() > 3 ? 1u : 0u);
            if (out.size() > 3 && out[3] != "*") {
                EXPECT_EQ(dialogs.messages()[0].text, out[3]);
            }
        }
    }
};

TEST_F(GotoFindTest, ValuesAreCheckedByTheFieldsKindAndWrittenBack) {
    engine::Recordset source = db.openRecordset("SELECT * FROM TempSource");
    run(source, "TitleTrack",
        {{"1|<|000325|Length", "Length <205 And Length > 0|00:03:25|Yesterday"},
         {"3|<=|00:03:25|length", "length <=205 And length > 0|00:03:25|Michelle"},
         {"1|>|000400|Length", "Length >240|00:04:00|Help!"},
         {"1|=|Yes|Live", "Live =True|True|Indian Summer"},
         {"1|=| 2 |Item", "Item =2|2|Nothing Compares"},
         {"1|Starts|B*at|ArtistSort", "ArtistSort LIKE 'B[*]at**'|B*at|Title?"},
         {"1|Contains|O'Neil|ArtistSort", "ArtistSort LIKE '*O''Neil*'|O'Neil|Nothing Compares"},
         {"3|Starts|Beat|ArtistSort", "ArtistSort LIKE 'Beat**'|Beat|Yesterday"},
         {"0|Starts|Beat|ArtistSort", "|Beat|Yesterday"},
         {"1|Starts|Queen|ArtistSort", "ArtistSort LIKE 'Queen**'|Queen|Yesterday"},
         {"1|=|3:25|Length", "||Yesterday|Value must be a valid time (e.g. 00:49:07)."},
         {"1|Starts||TitleTrack", "||Yesterday|Value must be a string."},
         {"1|Resembles|x|TitleTrack", "|x|Yesterday|*"}});
}

TEST_F(GotoFindTest, CompilationFindsUseTheListAliases) {
    engine::Recordset compilations = db.openRecordset(  // the aliases of the main window's list
        "SELECT Name AS C_Name, SumTime AS C_SumTime, C_Length, RecDate FROM Compilation "
        "ORDER BY Name");
    run(compilations, "c_name",
        {{"1|=|31.12.99|RecDate", "RecDate =#12/31/99#|31.12.99|abba hits"},
         {"1|>|31/12/1999|RecDate", "RecDate >#12/31/99#|31.12.99|O'Neil Mix"},
         {"4|<=|000650|C_SumTime", "C_SumTime <=410 And C_SumTime > 0|00:06:50|Zappa"},
         {"2|<|90|C_Length", "C_Length <90|90|O'Neil Mix"},
         {"1|=|010100|RecDate", "||O'Neil Mix|Value must be a valid date (e.g. 21.01.97)."}});
}

}  // namespace
