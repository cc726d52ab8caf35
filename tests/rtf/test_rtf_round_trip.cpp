// Writing and reading back keeps what the cover text shows.
#include <gtest/gtest.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <random>

#include "rtf/rtf.h"
#include "support/document_summary.h"

using testsupport::summarize;

namespace {

QTextCharFormat charFormat(const QString& family, double points, bool bold = false,
                           bool italic = false, bool underline = false, bool strike = false) {
    QTextCharFormat format;
    format.setFontFamilies({family});
    format.setFontPointSize(points);
    format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(italic);
    format.setFontUnderline(underline);
    format.setFontStrikeOut(strike);
    return format;
}

QTextBlockFormat blockFormat(Qt::Alignment alignment, int leftTwips, int firstTwips,
                             const std::vector<int>& tabTwips) {
    QTextBlockFormat format;
    format.setAlignment(alignment);
    format.setLeftMargin(leftTwips / rtf::kTwipsPerUnit);
    format.setTextIndent(firstTwips / rtf::kTwipsPerUnit);
    QList<QTextOption::Tab> tabs;
    for (int tab : tabTwips) {
        tabs.append(QTextOption::Tab(tab / rtf::kTwipsPerUnit, QTextOption::LeftTab));
    }
    format.setTabPositions(tabs);
    return format;
}

void expectRoundTrip(const QTextDocument& original) {
    const QString written = rtf::write(original);
    QTextDocument copy;
    rtf::readInto(written, copy);
    EXPECT_EQ(summarize(copy), summarize(original)) << written.toStdString();
    EXPECT_EQ(copy.toPlainText(), original.toPlainText());
    EXPECT_EQ(rtf::write(copy), written);
}

}  // namespace

TEST(RtfRoundTrip, CoverLayoutsKeepTheirFormats) {
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.setBlockFormat(blockFormat(Qt::AlignLeft, 400, -400, {400}));
    cursor.insertText("1.\t", charFormat("Arial", 10));
    cursor.insertText("Adams  ", charFormat("Arial", 10, true));
    cursor.insertText(" Morning  [2:45]", charFormat("Arial", 10));
    cursor.insertBlock(blockFormat(Qt::AlignHCenter, 0, 0, {}));
    cursor.insertText("Baker: ", charFormat("Times New Roman", 10.5, true, true));
    cursor.insertText("Gold", charFormat("Courier New", 14, false, false, true, true));
    cursor.insertBlock(blockFormat(Qt::AlignRight, 1440, 720, {720, 2880}));
    cursor.insertText("right", charFormat("Arial", 6));
    cursor.insertBlock(blockFormat(Qt::AlignJustify, 0, 0, {}));
    expectRoundTrip(document);
    EXPECT_EQ(summarize(document).size(), 4u);
}

TEST(RtfRoundTrip, SpecialCharactersAndCodePage) {
    QTextDocument document;
    QTextCursor cursor(&document);
    const QString text = QStringLiteral("{braces} \\back\ttab") + QChar::LineSeparator +
                         QStringLiteral("é € Ж 日本 \U0001F600 \u00A0end");
    cursor.insertText(text, charFormat(QStringLiteral("Liberation Sans"), 9));
    const QString written = rtf::write(document);
    EXPECT_TRUE(written.startsWith("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl"));
    for (QChar c : written) {
        ASSERT_LT(c.unicode(), 0x80) << "RTF is written in ASCII";
    }
    EXPECT_TRUE(written.contains("\\'e9 \\'80 \\u1046?")) << written.toStdString();
    EXPECT_TRUE(written.contains("\\u-10179?\\u-8704?"));
    EXPECT_TRUE(written.contains("\\{braces\\} \\\\back\\tab tab\\line "));
    expectRoundTrip(document);
}

TEST(RtfRoundTrip, EmptyLinesAndColoursSurvive) {
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextCharFormat red = charFormat("Arial", 9);
    red.setForeground(QColor(255, 0, 0));
    cursor.insertText("red", red);
    cursor.insertBlock();
    cursor.insertBlock();
    cursor.insertText("after two breaks", charFormat("Arial", 9));
    cursor.insertBlock();
    expectRoundTrip(document);
    EXPECT_EQ(document.blockCount(), 4);
    QTextDocument empty;
    expectRoundTrip(empty);
}

TEST(RtfRoundTrip, WhatOtherProgramsWroteIsStableAfterOneRead) {
    const QString sample = QStringLiteral(
        "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 Arial;}}"
        "{\\*\\generator Riched20}\\viewkind4\\uc1\\pard\\qc\\f0\\fs18\\b Adams: \\b0 Gold / "
        "\\b Baker: \\b0 Gold \\par\r\n}");
    QTextDocument first;
    rtf::readInto(sample, first);
    const QString written = rtf::write(first);
    QTextDocument second;
    rtf::readInto(written, second);
    EXPECT_EQ(summarize(second), summarize(first));
    EXPECT_EQ(rtf::write(second), written);
}

// Documents built at random from the formats the covers use survive a write and a read.
TEST(RtfRoundTrip, RandomDocuments) {
    const QStringList families = {"Arial", "Times New Roman", "Courier New", "Liberation Sans"};
    const std::vector<double> sizes = {6, 8, 9, 10, 10.5, 12, 14, 20};
    const std::vector<Qt::Alignment> alignments = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight,
                                                   Qt::AlignJustify};
    const QString alphabet = QStringLiteral("abcXYZ 019.:;[]{}\\\t\u2028éß€Жω日-'\"");
    std::mt19937 random(8);
    auto pick = [&random](int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(random);
    };
    for (int round = 0; round < 150; ++round) {
        QTextDocument document;
        QTextCursor cursor(&document);
        const int paragraphs = 1 + pick(5);
        for (int p = 0; p < paragraphs; ++p) {
            std::vector<int> tabs;
            for (int t = pick(4), at = 0; t > 0; --t) {
                at += 1 + pick(2000);
                tabs.push_back(at);
            }
            const QTextBlockFormat block =
                blockFormat(alignments[pick(4)], pick(3000), pick(2000) - 1000, tabs);
            if (p == 0) {
                cursor.setBlockFormat(block);
            } else {
                cursor.insertBlock(block);
            }
            for (int r = pick(5); r > 0; --r) {
                QString text;
                for (int c = 1 + pick(12); c > 0; --c) {
                    text += alphabet[pick(alphabet.size())];
                }
                cursor.insertText(text, charFormat(families[pick(families.size())],
                                                   sizes[pick(static_cast<int>(sizes.size()))],
                                                   pick(2), pick(2), pick(2), pick(2)));
            }
        }
        SCOPED_TRACE(round);
        expectRoundTrip(document);
    }
}
