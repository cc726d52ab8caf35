// Reading what Windows rich-text boxes and word processors write, and plain text.
#include <gtest/gtest.h>

#include <QTextDocument>
#include <random>

#include "rtf/rtf.h"
#include "support/document_summary.h"

using testsupport::ParagraphSummary;
using testsupport::RunSummary;
using testsupport::summarize;

namespace {

std::vector<ParagraphSummary> read(const QString& rtfText) {
    QTextDocument document;
    rtf::readInto(rtfText, document);
    return summarize(document);
}

QString plainOf(const QString& stored) {
    QTextDocument document;
    rtf::readInto(stored, document);
    // Raw text: non-breaking spaces and line separators stay what they are.
    return document.toRawText().replace(QChar::ParagraphSeparator, u'\n');
}

RunSummary run(const QString& text, const QString& family, double points, const QString& flags = {},
               const QString& color = {}) {
    const auto has = [&flags](char flag) { return flags.contains(QLatin1Char(flag)); };
    return {text, family, points, has('b'), has('i'), has('u'), has('s'), color};
}

// What a Windows rich-text box streams out for a two-line cover.
const QString kRichEditSample = QStringLiteral(
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\nouicompat\\deflang1031{\\fonttbl{\\f0\\fnil\\fcharset0 "
    "Arial;}{\\f1\\fnil Tahoma;}}\r\n"
    "{\\*\\generator Riched20 10.0.19041}\\viewkind4\\uc1 \r\n"
    "\\pard\\qc\\f0\\fs18\\lang7 \\b Adams: \\b0 Morning / \\b Baker: \\b0 Night Train\\par\r\n"
    "\\pard\\sa200\\sl276\\slmult1\\f1\\fs20 Gr\\'fc\\'dfe \\u8364?uro\\par\r\n"
    "}\r\n\0");

// What a word processor writes: charsets, a colour table, a style sheet, document information,
// alternative font names and runs in groups.
const QString kWordProcessorSample = QStringLiteral(
    "{\\rtf1\\ansi\\deff4\\adeflang1025\r\n"
    "{\\fonttbl{\\f0\\froman\\fprq2\\fcharset0 Times New Roman;}{\\f1\\froman\\fprq2\\fcharset2 "
    "Symbol;}{\\f4\\fswiss\\fprq2\\fcharset0 Liberation Sans{\\*\\falt Arial};}}\r\n"
    "{\\colortbl;\\red0\\green0\\blue0;\\red255\\green0\\blue0;}\r\n"
    "{\\stylesheet{\\s0\\snext0\\ql\\nowidctlpar\\cf0\\kerning1\\loch\\f4\\fs24\\lang1031 "
    "Normal;}}\r\n"
    "{\\info{\\creatim\\yr2024\\mo1\\dy5\\hr10\\min0}{\\title Cover}{\\author Someone}}\r\n"
    "\\deftab709{\\*\\pgdsctbl{\\pgdsc0\\pgdscuse451\\pgwsxn11906 Standard;}}\r\n"
    "\\pard\\plain \\s0\\ql\\li400\\fi-400\\tx400 {\\f4\\fs20\\b 1.}{\\f4\\fs20\\tab\\i Adams}"
    "{\\f4\\fs20   Morning  [2:45]}\\par\r\n"
    "\\pard\\plain \\s0\\qr{\\f4\\fs24\\ul Under}{\\f4\\fs24\\strike  struck}{\\f4\\fs24\\cf2 "
    " red}\\par\r\n"
    "}");

}  // namespace

TEST(RtfReader, RichTextBoxOutputKeepsParagraphsFontsAndBold) {
    const auto paragraphs = read(kRichEditSample);
    ASSERT_EQ(paragraphs.size(), 2u);
    EXPECT_EQ(paragraphs[0].alignment, "center");
    EXPECT_EQ(
        paragraphs[0].runs,
        (std::vector<RunSummary>{run("Adams: ", "Arial", 9, "b"), run("Morning / ", "Arial", 9),
                                 run("Baker: ", "Arial", 9, "b"), run("Night Train", "Arial", 9)}));
    EXPECT_EQ(paragraphs[1].alignment, "left");
    EXPECT_EQ(paragraphs[1].runs,
              (std::vector<RunSummary>{run(QStringLiteral("Grüße €uro"), "Tahoma", 10)}));
}

TEST(RtfReader, WordProcessorOutputKeepsIndentsTabsAndCharacterFormats) {
    const auto paragraphs = read(kWordProcessorSample);
    ASSERT_EQ(paragraphs.size(), 2u);
    EXPECT_EQ(paragraphs[0].leftTwips, 400);
    EXPECT_EQ(paragraphs[0].firstLineTwips, -400);
    EXPECT_EQ(paragraphs[0].tabTwips, std::vector<int>{400});
    EXPECT_EQ(paragraphs[0].runs,
              (std::vector<RunSummary>{run("1.", "Liberation Sans", 10, "b"),
                                       run("\t", "Liberation Sans", 10),
                                       run("Adams", "Liberation Sans", 10, "i"),
                                       run("  Morning  [2:45]", "Liberation Sans", 10)}));
    EXPECT_EQ(paragraphs[1].alignment, "right");
    EXPECT_EQ(paragraphs[1].leftTwips, 0);
    EXPECT_TRUE(paragraphs[1].tabTwips.empty());
    EXPECT_EQ(paragraphs[1].runs,
              (std::vector<RunSummary>{run("Under", "Liberation Sans", 12, "u"),
                                       run(" struck", "Liberation Sans", 12, "s"),
                                       run(" red", "Liberation Sans", 12, "", "#ff0000")}));
}

TEST(RtfReader, SwitchesAndResetsOfCharacterFormats) {
    const auto paragraphs = read(
        "{\\rtf1{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}}\\f1\\fs28\\b\\i\\ul\\strike a"
        "\\b0\\i0\\ulnone\\strike0 b\\uldb c\\ul0 {\\b d}e\\plain f}");
    ASSERT_EQ(paragraphs.size(), 1u);
    EXPECT_EQ(
        paragraphs[0].runs,
        (std::vector<RunSummary>{run("a", "Courier New", 14, "bius"), run("b", "Courier New", 14),
                                 run("c", "Courier New", 14, "u"), run("d", "Courier New", 14, "b"),
                                 run("e", "Courier New", 14), run("f", "Arial", 12)}));
}

// Paragraphs and lines, escapes and symbols, Unicode with its fallbacks, hex bytes in the
// document's code page, destinations and words left out, plain text taken as it is.
TEST(RtfReader, TextsReadAsTheyShow) {
    const std::pair<QString, QString> cases[] = {
        {"{\\rtf1 a\\par b\\par}", "a\nb"},
        {"{\\rtf1 a\\par b}", "a\nb"},
        {"{\\rtf1 a\\par\\par}", "a\n"},
        {"{\\rtf1 a\\line b\\tab c}", QString("a") + QChar::LineSeparator + "b\tc"},
        {"{\\rtf1 a\\\nb}", "a\nb"},  // a backslash before a line break is \par
        {"{\\rtf1}", ""},
        {"{\\rtf1 \\{x\\}\\\\ a\\~b\\_c\\-d \\emdash\\endash\\lquote\\rdblquote}",
         "{x}\\ a\u00A0b\u2011cd \u2014\u2013\u2018\u201D"},
        {"{\\rtf1 \\u8364?x}", "€x"},
        {"{\\rtf1\\uc2 \\u8364\\'80\\'80x}", "€x"},
        {"{\\rtf1\\uc0 \\u8364 x}", "€x"},
        {"{\\rtf1 {\\uc3 \\u8364 ab}c}", "€c"},  // a brace ends the fallback
        {"{\\rtf1 \\u-10179?\\u-8704?}", "\U0001F600"},
        {"{\\rtf1 \\u1046\\'3fa}", "Жa"},
        {"{\\rtf1\\ansi\\ansicpg1250 \\'8a\\'9e}", "Šž"},
        {"{\\rtf1\\ansi \\'e4\\'F6}", "äö"},
        {"{\\rtf1 a{\\*\\unknowndest hidden {\\nested text}}b\\unknownword42 "
         "c{\\field{\\*\\fldinst "
         "HYPERLINK x}{\\fldrslt shown}}{\\pict\\wmetafile8 0123abcdef}d}",
         "abcshownd"},
        {"1.\tAdams   Morning\r\n2.\tBaker\n", "1.\tAdams   Morning\n2.\tBaker\n"},
        {"a\rb", "a\nb"},
        {"{not rtf}", "{not rtf}"},
    };
    for (const auto& [stored, shown] : cases) {
        EXPECT_EQ(plainOf(stored), shown) << stored.toStdString();
    }
    EXPECT_TRUE(rtf::isRtf("{\\rtf1}"));
    EXPECT_FALSE(rtf::isRtf(" {\\rtf1}") || rtf::isRtf(""));
}

TEST(RtfReader, HexBytesFollowTheFontsCharsetOrTheDocumentsCodePage) {
    EXPECT_EQ(plainOf("{\\rtf1\\ansi\\ansicpg1251{\\fonttbl{\\f0\\fnil\\fcharset204 Arial;}"
                      "{\\f1\\fnil\\fcharset0 Arial;}}\\f0 \\'cf\\'f0\\'e8\\f1 \\'e9\\'80}"),
              QStringLiteral("При\u00E9\u20AC"));
    // Double-byte code pages: a character is two \'hh in a row.
    EXPECT_EQ(plainOf("{\\rtf1\\ansi\\ansicpg932\\deff0{\\fonttbl{\\f0\\fnil\\fcharset128 "
                      "MS Gothic;}}\\f0 \\'93\\'fa\\'96\\'7b}"),
              QStringLiteral("日本"));
    // Font names are bytes of the font's own charset.
    const auto named =
        read("{\\rtf1{\\fonttbl{\\f0\\fcharset204 \\'c0\\'f0\\'e8\\'e0\\'eb;}}\\f0 x}");
    EXPECT_EQ(named.at(0).runs.at(0).family, QStringLiteral("Ариал"));
}

// Damaged RTF: the reader keeps what it can read and always comes to an end.
TEST(RtfDamage, UnbalancedAndTruncatedTextsKeepWhatCameBefore) {
    const std::pair<QString, QString> cases[] = {
        {"{\\rtf1 abc}} def", "abc"},       {"{\\rtf1 abc\\pa", "abc"},
        {"{\\rtf1 abc\\'e", "abce"},        {"{\\rtf1 abc\\", "abc"},
        {"{\\rtf1{\\fonttbl{\\f0 Ari", ""}, {"{\\rtf1 a\\u", "a"}};
    for (const auto& [stored, shown] : cases) {
        EXPECT_EQ(plainOf(stored), shown) << stored.toStdString();
    }
    const auto paragraphs = read("{\\rtf1 abc {\\b def");
    ASSERT_EQ(paragraphs.size(), 1u);
    ASSERT_EQ(paragraphs[0].runs.size(), 2u);
    EXPECT_TRUE(paragraphs[0].runs[1].bold);
}

TEST(RtfDamage, HugeNumbersAreBounded) {
    const auto paragraphs = read(
        "{\\rtf1\\fs99999999999999999\\li-99999999999\\fi99999999999\\tx999999999999 big\\par}");
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
    QString tabs = "{\\rtf1 ";
    for (int i = 0; i < 10000; ++i) {
        tabs += QStringLiteral("\\tx%1").arg(i);
    }
    EXPECT_LE(read(tabs + " x\\par}").at(0).tabTwips.size(), 64u);
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
