// The cover text box: stored RTF, composed plain text with bold performers, fonts, clipboard.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
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
const QStringList kMdBold{"3+7", "22+7"};

// The box as the editor leaves it after composing: emptied, default font, text, bold names.
void compose(ui::CoverTextBox& box, const QString& format, const QString& text,
             const ui::CoverTextBox::BoldRanges& bold) {
    box.setStoredText(QString());
    box.setDefaultFont(format);
    box.setStoredText(text);
    box.boldPerformers(bold);
}

class CoverTextBox : public ::testing::Test {
  protected:
    void SetUp() override { compose(box, "MD", kMdText, {{3, 7}, {22, 7}, {200, 5}}); }
    ui::CoverTextBox box;
};

TEST_F(CoverTextBox, ComposedTextShowsThePerformersBoldAndIsStoredAsRtf) {
    EXPECT_EQ(box.document()->toPlainText(), kMdText);
    EXPECT_EQ(boldRanges(*box.document()), kMdBold);  // a range beyond the text is cut
    EXPECT_EQ(summarize(*box.document())[0].alignment, "center");
    EXPECT_EQ(box.textCursor().position(), 0);
    const QString stored = box.storedText();
    ASSERT_TRUE(rtf::isRtf(stored));
    ui::CoverTextBox other;
    other.setStoredText(stored);
    EXPECT_EQ(other.storedText(), stored);
    EXPECT_EQ(summarize(*other.document()), summarize(*box.document()));
    other.setStoredText("{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\b \\par}");
    EXPECT_EQ(other.storedText(), "") << "a cover without text is stored as the empty text";
}

TEST_F(CoverTextBox, TheClipboardHoldsTheSelectionOrAllAsRtfWithBoldPerformers) {
    box.copyToClipboard();
    const QMimeData* data = QApplication::clipboard()->mimeData();
    QTextDocument pasted;
    rtf::readInto(QString::fromLatin1(data->data("text/rtf")), pasted);
    EXPECT_EQ(pasted.toPlainText(), kMdText);
    EXPECT_EQ(boldRanges(pasted), kMdBold);
    EXPECT_EQ(data->data("application/rtf"), data->data("text/rtf"));
    EXPECT_EQ(data->text(), kMdText);
    EXPECT_FALSE(box.textCursor().hasSelection());

    QTextCursor cursor = box.textCursor();
    cursor.setPosition(19);
    cursor.setPosition(29, QTextCursor::KeepAnchor);
    box.setTextCursor(cursor);
    box.copyToClipboard();
    EXPECT_EQ(QApplication::clipboard()->mimeData()->text(), "2. Baker: ");
}

TEST_F(CoverTextBox, AFontWithoutBoldKeepsThePerformersBoldWithinSixToFourteenPoints) {
    platform::ScriptedDialogs dialogs;
    const QString before = box.storedText();
    dialogs.answerFont(std::nullopt);
    EXPECT_FALSE(box.chooseFont(dialogs));
    EXPECT_EQ(box.storedText(), before) << "Cancel changes nothing";
    EXPECT_EQ(dialogs.fontRequests()[0].minPointSize, 6);
    EXPECT_EQ(dialogs.fontRequests()[0].maxPointSize, 14);

    QFont font("Courier New", 20);
    font.setItalic(true);
    dialogs.answerFont(font);
    EXPECT_TRUE(box.chooseFont(dialogs));
    const auto run = summarize(*box.document())[0].runs[0];
    EXPECT_EQ(run.family, "Courier New");
    EXPECT_EQ(run.points, 14);
    EXPECT_TRUE(run.italic);
    EXPECT_EQ(boldRanges(*box.document()), kMdBold);
    font.setBold(true);
    box.applyFont(font);
    EXPECT_EQ(boldRanges(*box.document()), (QStringList{"0+40"}));
}

}  // namespace
