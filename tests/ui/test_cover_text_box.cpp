// The cover text box: stored RTF, composed plain text with bold performers, fonts, clipboard.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include "platform/scripted_dialogs.h"
#include "rtf/rtf.h"
#include "support/document_summary.h"
#include "ui/controls/cover_text_box.h"

using testsupport::boldRanges;
using testsupport::summarize;

namespace {

const QString kMdText = QStringLiteral("1. Adams: Morning  2. Baker: Night Train\n");
const ui::CoverTextBox::BoldRanges kMdBold = {{3, 7}, {22, 7}};
const QString kCdRomText =
    QStringLiteral("1.\tAdams   Morning  [2:45]\r\n2.\tBaker   Night Train  [6:31]\n");
const ui::CoverTextBox::BoldRanges kCdRomBold = {{3, 7}, {31, 7}};

// The box as the editor leaves it after composing: emptied, default font, text, bold names.
void compose(ui::CoverTextBox& box, const QString& format, const QString& text,
             const ui::CoverTextBox::BoldRanges& bold) {
    box.setStoredText(QString());
    box.setDefaultFont(format);
    box.setStoredText(text);
    box.boldPerformers(bold);
}

QString textAt(const QTextDocument& document, int start, int length) {
    QTextCursor cursor(const_cast<QTextDocument*>(&document));
    cursor.setPosition(start);
    cursor.setPosition(start + length, QTextCursor::KeepAnchor);
    return cursor.selectedText();
}

}  // namespace

TEST(CoverTextBox, StoredRtfComesBackUnchanged) {
    ui::CoverTextBox box;
    EXPECT_EQ(box.objectName(), "rtfCover");
    compose(box, "MD", kMdText, kMdBold);
    const QString stored = box.storedText();
    ASSERT_TRUE(rtf::isRtf(stored));

    ui::CoverTextBox other;
    other.setStoredText(stored);
    EXPECT_EQ(other.storedText(), stored);
    EXPECT_EQ(summarize(*other.document()), summarize(*box.document()));

    other.setStoredText(QString());
    EXPECT_EQ(other.storedText(), "");
    other.setStoredText("{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\b \\par}");
    EXPECT_EQ(other.storedText(), "") << "a cover without text is stored as the empty text";
}

TEST(CoverTextBox, ComposedTextShowsExactlyThePerformersBold) {
    ui::CoverTextBox box;
    compose(box, "MD", kMdText, kMdBold);
    const QTextDocument& document = *box.document();
    EXPECT_EQ(document.toPlainText(), kMdText);
    EXPECT_EQ(boldRanges(document), (QStringList{"3+7", "22+7"}));
    EXPECT_EQ(textAt(document, 3, 7), "Adams: ");
    EXPECT_EQ(textAt(document, 22, 7), "Baker: ");
    const auto paragraphs = summarize(document);
    EXPECT_EQ(paragraphs[0].alignment, "center");
    for (const auto& run : paragraphs[0].runs) {
        EXPECT_EQ(run.family, "Arial");
        EXPECT_EQ(run.points, 9);
    }
    EXPECT_EQ(box.textCursor().position(), 0);
    EXPECT_FALSE(box.textCursor().hasSelection());
}

TEST(CoverTextBox, CdRomLinesKeepTheBoldOnTheirNames) {
    ui::CoverTextBox box;
    compose(box, "CD-ROM", kCdRomText, kCdRomBold);
    box.setHangingIndent(400, 400);
    const QTextDocument& document = *box.document();
    EXPECT_EQ(document.blockCount(), 3);
    EXPECT_EQ(boldRanges(document), (QStringList{"3+7", "30+7"}));
    EXPECT_EQ(textAt(document, 3, 7), "Adams  ");
    EXPECT_EQ(textAt(document, 30, 7), "Baker  ");
    const auto paragraphs = summarize(document);
    EXPECT_EQ(paragraphs[1].alignment, "left");
    EXPECT_EQ(paragraphs[1].runs[0].points, 10);
    EXPECT_EQ(paragraphs[1].leftTwips, 400);
    EXPECT_EQ(paragraphs[1].firstLineTwips, -400);
    EXPECT_EQ(paragraphs[1].tabTwips, std::vector<int>{400});
    EXPECT_TRUE(box.storedText().contains("\\li400\\fi-400\\tx400"));
    EXPECT_EQ(box.textCursor().position(), 0);
}

TEST(CoverTextBox, RangesBeyondTheTextAreCut) {
    ui::CoverTextBox box;
    compose(box, "MD", "Adams / Baker \n", {{8, 100}, {200, 5}, {0, 0}});
    EXPECT_EQ(boldRanges(*box.document()), (QStringList{"8+6"}));  // "Baker ", up to the end
}

TEST(CoverTextBox, ClipboardHoldsRtfWithBoldPerformersAndPlainText) {
    ui::CoverTextBox box;
    compose(box, "MD", kMdText, kMdBold);
    box.copyToClipboard();
    const QMimeData* data = QApplication::clipboard()->mimeData();
    ASSERT_NE(data, nullptr);
    const QByteArray rtfBytes = data->data("text/rtf");
    EXPECT_EQ(data->data("application/rtf"), rtfBytes);
    QTextDocument pasted;
    rtf::readInto(QString::fromLatin1(rtfBytes), pasted);
    EXPECT_EQ(pasted.toPlainText(), kMdText);
    EXPECT_EQ(boldRanges(pasted), (QStringList{"3+7", "22+7"}));
    EXPECT_EQ(data->text(), kMdText);
    EXPECT_TRUE(data->hasHtml());
    EXPECT_EQ(box.textCursor().position(), 0);
    EXPECT_FALSE(box.textCursor().hasSelection());
}

TEST(CoverTextBox, ClipboardTakesOnlyTheSelection) {
    ui::CoverTextBox box;
    compose(box, "MD", kMdText, kMdBold);
    QTextCursor cursor = box.textCursor();
    cursor.setPosition(19);
    cursor.setPosition(29, QTextCursor::KeepAnchor);
    box.setTextCursor(cursor);
    box.copyToClipboard();
    const QMimeData* data = QApplication::clipboard()->mimeData();
    EXPECT_EQ(data->text(), "2. Baker: ");
    QTextDocument pasted;
    rtf::readInto(QString::fromLatin1(data->data("text/rtf")), pasted);
    EXPECT_EQ(boldRanges(pasted), (QStringList{"3+7"}));
}

TEST(CoverTextBox, FontWithoutBoldKeepsThePerformersBold) {
    ui::CoverTextBox box;
    compose(box, "MD", kMdText, kMdBold);
    QFont font("Times New Roman", 12);
    font.setItalic(true);
    font.setUnderline(true);
    box.applyFont(font);
    const QTextDocument& document = *box.document();
    EXPECT_EQ(boldRanges(document), (QStringList{"3+7", "22+7"}));
    const auto paragraphs = summarize(document);
    for (const auto& run : paragraphs[0].runs) {
        EXPECT_EQ(run.family, "Times New Roman");
        EXPECT_EQ(run.points, 12);
        EXPECT_TRUE(run.italic);
        EXPECT_TRUE(run.underline);
        EXPECT_FALSE(run.strike);
    }
    EXPECT_EQ(box.textCursor().position(), 0);

    font.setBold(true);
    box.applyFont(font);
    EXPECT_EQ(boldRanges(document), (QStringList{"0+40"}));
}

TEST(CoverTextBox, FontDialogOffersSixToFourteenPoints) {
    ui::CoverTextBox box;
    compose(box, "MD", kMdText, kMdBold);
    const QString before = box.storedText();
    platform::ScriptedDialogs dialogs;
    dialogs.answerFont(std::nullopt);
    EXPECT_FALSE(box.chooseFont(dialogs));
    EXPECT_EQ(box.storedText(), before) << "Cancel changes nothing";
    ASSERT_EQ(dialogs.fontRequests().size(), 1u);
    EXPECT_EQ(dialogs.fontRequests()[0].minPointSize, 6);
    EXPECT_EQ(dialogs.fontRequests()[0].maxPointSize, 14);
    EXPECT_EQ(dialogs.fontRequests()[0].initial.family(), "Arial");

    dialogs.answerFont(QFont("Courier New", 20));
    EXPECT_TRUE(box.chooseFont(dialogs));
    const auto run = summarize(*box.document())[0].runs[0];
    EXPECT_EQ(run.family, "Courier New");
    EXPECT_EQ(run.points, 14);
    EXPECT_EQ(boldRanges(*box.document()), (QStringList{"3+7", "22+7"}));

    // Asked without a range, the dialog gives the size chosen.
    dialogs.answerFont(QFont("Courier New", 20));
    platform::Dialogs& plain = dialogs;
    EXPECT_EQ(plain.chooseFont("Font", QFont())->pointSize(), 20);
}

TEST(CoverTextBox, DefaultFontIsPlainArialByFormat) {
    ui::CoverTextBox box;
    box.setStoredText("{\\rtf1{\\fonttbl{\\f0 Courier;}}\\qr\\f0\\fs40\\b\\i\\ul\\strike x\\par}");
    box.setDefaultFont("Cd-Rom");
    auto paragraph = summarize(*box.document())[0];
    EXPECT_EQ(paragraph.alignment, "left");
    EXPECT_EQ(paragraph.runs[0],
              (testsupport::RunSummary{"x", "Arial", 10, false, false, false, false, {}}));
    EXPECT_EQ(box.textCursor().position(), 0);

    box.setDefaultFont("MD");
    paragraph = summarize(*box.document())[0];
    EXPECT_EQ(paragraph.alignment, "center");
    EXPECT_EQ(paragraph.runs[0].points, 9);
}

TEST(CoverTextBox, SelectionIsKeptWhenThereIsOne) {
    ui::CoverTextBox box;
    box.setStoredText("one two");
    box.selectAllIfNone();
    EXPECT_EQ(box.textCursor().selectedText(), "one two");
    QTextCursor cursor = box.textCursor();
    cursor.setPosition(4);
    cursor.setPosition(7, QTextCursor::KeepAnchor);
    box.setTextCursor(cursor);
    box.selectAllIfNone();
    EXPECT_EQ(box.textCursor().selectedText(), "two");
    box.applyFont(QFont("Courier New", 8));
    const auto runs = summarize(*box.document())[0].runs;
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[1].text, "two");
    EXPECT_EQ(runs[1].family, "Courier New");
    EXPECT_NE(runs[0].family, "Courier New");
}
