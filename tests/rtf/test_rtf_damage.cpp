// Damaged RTF: the reader keeps what it can read and always comes to an end.
#include <gtest/gtest.h>

#include <QTextDocument>
#include <random>

#include "rtf/rtf.h"
#include "support/document_summary.h"

using testsupport::summarize;

namespace {

QString plainOf(const QString& stored) {
    QTextDocument document;
    rtf::readInto(stored, document);
    // Raw text: non-breaking spaces and line separators stay what they are.
    return document.toRawText().replace(QChar::ParagraphSeparator, u'\n');
}

}  // namespace

TEST(RtfDamage, UnbalancedAndTruncatedTextsKeepWhatCameBefore) {
    EXPECT_EQ(plainOf("{\\rtf1 abc {\\b def"), "abc def");
    EXPECT_EQ(plainOf("{\\rtf1 abc}} def"), "abc");
    EXPECT_EQ(plainOf("{\\rtf1 abc\\pa"), "abc");
    EXPECT_EQ(plainOf("{\\rtf1 abc\\'e"), "abce");
    EXPECT_EQ(plainOf("{\\rtf1 abc\\"), "abc");
    EXPECT_EQ(plainOf("{\\rtf1{\\fonttbl{\\f0 Ari"), "");
    EXPECT_EQ(plainOf("{\\rtf1 a\\u"), "a");

    QTextDocument document;
    rtf::readInto("{\\rtf1 abc {\\b def", document);
    const auto paragraphs = summarize(document);
    ASSERT_EQ(paragraphs.size(), 1u);
    ASSERT_EQ(paragraphs[0].runs.size(), 2u);
    EXPECT_TRUE(paragraphs[0].runs[1].bold);
}

TEST(RtfDamage, HugeNumbersAreBounded) {
    QTextDocument document;
    rtf::readInto(
        "{\\rtf1\\fs99999999999999999\\li-99999999999\\fi99999999999"
        "\\tx999999999999 big\\par}",
        document);
    const auto paragraphs = summarize(document);
    ASSERT_EQ(paragraphs.size(), 1u);
    ASSERT_EQ(paragraphs[0].runs.size(), 1u);
    EXPECT_EQ(paragraphs[0].runs[0].text, "big");
    EXPECT_LE(paragraphs[0].runs[0].points, 1638.0);
    EXPECT_GE(paragraphs[0].leftTwips, -31680);
    EXPECT_LE(paragraphs[0].firstLineTwips, 31680);
    EXPECT_LE(paragraphs[0].tabTwips.at(0), 31680);
    EXPECT_EQ(plainOf("{\\rtf1 {\\uc999999999 \\u8364 abc\\par more}next}"),
              QStringLiteral("€next"));
    EXPECT_EQ(plainOf("{\\rtf1 \\u99999999?x}"), "x");
}

TEST(RtfDamage, ManyTabStopsAreCapped) {
    QString source = "{\\rtf1 ";
    for (int i = 0; i < 10000; ++i) {
        source += QStringLiteral("\\tx%1").arg(i);
    }
    QTextDocument document;
    rtf::readInto(source + " x\\par}", document);
    EXPECT_LE(summarize(document).at(0).tabTwips.size(), 64u);
}

TEST(RtfDamage, DeepNestingAndBinaryData) {
    const int depth = 100000;
    EXPECT_EQ(plainOf("{\\rtf1 a" + QString(depth, u'{') + "\\b x" + QString(depth, u'}') + "b}"),
              "axb");
    EXPECT_EQ(plainOf("{\\rtf1 a\\bin5 }}}}}b}"), "ab");
    EXPECT_EQ(plainOf("{\\rtf1 a\\bin999999999 bcd"), "a");
    EXPECT_EQ(
        plainOf(QString("{\\rtf1 a") + QChar(0) + QChar(1) + QChar(0x2029) + QChar(0xFDD0) + "b}"),
        "ab");
}

// Random junk and random mixtures of RTF pieces: reading ends and gives a consistent document.
TEST(RtfDamage, RandomInputNeverBreaksTheReader) {
    const QStringList pieces = {
        "{",          "}",           "\\b",      "\\b0",  "\\par",       "\\pard", "\\'",
        "\\'e9",      "\\u",         "\\u-",     "\\uc5", "\\*",         "\\bin3", "\\fs",
        "\\f9",       "\\tx",        "\\li-",    "x",     " ",           ";",      "\\",
        "{\\fonttbl", "{\\colortbl", "\\red300", "\\cf7", "\\ansicpg932"};
    std::mt19937 random(20240605);
    for (int round = 0; round < 300; ++round) {
        QString source = "{\\rtf1 ";
        const int length = std::uniform_int_distribution<int>(0, 200)(random);
        for (int i = 0; i < length; ++i) {
            if (round % 3 == 0) {
                source += QChar(
                    static_cast<char16_t>(std::uniform_int_distribution<int>(0, 0xFFFF)(random)));
            } else {
                source += pieces[std::uniform_int_distribution<int>(0, pieces.size() - 1)(random)];
                if (random() % 4 == 0) {
                    source +=
                        QString::number(std::uniform_int_distribution<int>(-70000, 70000)(random));
                }
            }
        }
        QTextDocument document;
        rtf::readInto(source, document);
        // What was read can be written and read again to the same text.
        QTextDocument again;
        rtf::readInto(rtf::write(document), again);
        ASSERT_EQ(again.toPlainText(), document.toPlainText()) << source.toStdString();
    }
}
