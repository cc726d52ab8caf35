// Writing and reading back keeps what the cover text shows.
#include <gtest/gtest.h>

#include <QTextCursor>
#include <QTextDocument>
#include <random>

#include "rtf/rtf.h"
#include "support/document_summary.h"

using testsupport::summarize;

namespace {

void expectRoundTrip(const QTextDocument& original) {
    const QString written = rtf::write(original);
    QTextDocument copy;
    rtf::readInto(written, copy);
    EXPECT_EQ(summarize(copy), summarize(original)) << written.toStdString();
    EXPECT_EQ(copy.toPlainText(), original.toPlainText());
    EXPECT_EQ(rtf::write(copy), written);
}

// RTF is written in ASCII: braces and backslashes escaped, the code page's characters as bytes,
// others as Unicode with a fallback.
TEST(RtfRoundTrip, SpecialCharactersAndCodePage) {
    QTextDocument document;
    QTextCharFormat format;
    format.setFontFamilies({"Liberation Sans"});
    format.setFontPointSize(9);
    QTextCursor(&document).insertText(
        QString("{braces} \\back\ttab") + QChar::LineSeparator + "é € Ж 日本 \U0001F600 \u00A0end",
        format);
    const QString written = rtf::write(document);
    EXPECT_TRUE(written.startsWith("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl"));
    EXPECT_TRUE(
        std::all_of(written.begin(), written.end(), [](QChar c) { return c.unicode() < 0x80; }));
    for (const char* escaped :
         {"\\'e9 \\'80 \\u1046?", "\\u-10179?\\u-8704?", "\\{braces\\} \\\\back\\tab tab\\line "}) {
        EXPECT_TRUE(written.contains(escaped)) << escaped << " in " << written.toStdString();
    }
    expectRoundTrip(document);
    expectRoundTrip(QTextDocument());
}

// Documents built at random from the covers' formats, colours, paragraph formats, empty
// paragraphs and characters survive a write and a read.
TEST(RtfRoundTrip, RandomDocuments) {
    const QStringList families = {"Arial", "Times New Roman", "Courier New", "Liberation Sans"};
    const std::vector<double> sizes = {6, 8, 9, 10, 10.5, 12, 14, 20};
    const Qt::Alignment alignments[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight,
                                        Qt::AlignJustify};
    const QColor colours[] = {QColor(), QColor(255, 0, 0), QColor(0, 128, 0)};
    const QString alphabet = QStringLiteral("abcXYZ 019.:;[]{}\\\t\u2028éß€Жω日-'\"");
    std::mt19937 random(8);
    auto pick = [&random](int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(random);
    };
    for (int round = 0; round < 150; ++round) {
        QTextDocument document;
        QTextCursor cursor(&document);
        for (int p = 1 + pick(5), first = p; p > 0; --p) {
            QTextBlockFormat block;
            block.setAlignment(alignments[pick(4)]);
            block.setLeftMargin(pick(3000) / rtf::kTwipsPerUnit);
            block.setTextIndent((pick(2000) - 1000) / rtf::kTwipsPerUnit);
            QList<QTextOption::Tab> tabs;
            for (int t = pick(4), at = 0; t > 0; --t) {
                tabs.append(QTextOption::Tab((at += 1 + pick(2000)) / rtf::kTwipsPerUnit,
                                             QTextOption::LeftTab));
            }
            block.setTabPositions(tabs);
            if (p == first) {
                cursor.setBlockFormat(block);
            } else {
                cursor.insertBlock(block);
            }
            for (int r = pick(5); r > 0; --r) {
                QTextCharFormat format;
                format.setFontFamilies({families[pick(families.size())]});
                format.setFontPointSize(sizes[pick(int(sizes.size()))]);
                format.setFontWeight(pick(2) ? QFont::Bold : QFont::Normal);
                format.setFontItalic(pick(2));
                format.setFontUnderline(pick(2));
                format.setFontStrikeOut(pick(2));
                if (const QColor colour = colours[pick(3)]; colour.isValid()) {
                    format.setForeground(colour);
                }
                QString text;
                for (int c = 1 + pick(12); c > 0; --c) {
                    text += alphabet[pick(alphabet.size())];
                }
                cursor.insertText(text, format);
            }
        }
        SCOPED_TRACE(round);
        expectRoundTrip(document);
    }
}

}  // namespace
