// The cover text box: bold performers kept in stored RTF, the clipboard and a chosen font.
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

class CoverTextBox : public ::testing::Test {
  protected:
    // The box as the editor leaves it after composing: emptied, default font, text, bold names.
    void SetUp() override {
        box.setStoredText(QString());
        box.setDefaultFont("MD");
        box.setStoredText(kMdText);
        box.boldPerformers({{3, 7}, {22, 7}, {200, 5}});
    }
    ui::CoverTextBox box;
};

// The bold performers (a range beyond the text cut) go with the stored RTF and the clipboard.
TEST_F(CoverTextBox, TheStoredTextAndTheClipboardKeepTheBoldPerformers) {
    ui::CoverTextBox other;
    other.setStoredText(box.storedText());
    EXPECT_EQ(summarize(*other.document()), summarize(*box.document()));
    EXPECT_EQ(boldRanges(*other.document()), kMdBold);
    other.setStoredText("{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\b \\par}");
    EXPECT_EQ(other.storedText(), "") << "a cover without text is stored as the empty text";
    box.copyToClipboard();
    const QMimeData* data = QApplication::clipboard()->mimeData();
    QTextDocument pasted;
    rtf::readInto(QString::fromLatin1(data->data("text/rtf")), pasted);
    EXPECT_EQ(boldRanges(pasted), kMdBold);
    EXPECT_EQ(data->text(), kMdText);

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

    QFont font("Courier New", 20);
    font.setItalic(true);
    dialogs.answerFont(font);
    EXPECT_TRUE(box.chooseFont(dialogs));
    const auto run = summarize(*box.document())[0].runs[0];
    EXPECT_TRUE(run.family == "Courier New" && run.points == 14 && run.italic);
    EXPECT_EQ(boldRanges(*box.document()), kMdBold);
    font.setBold(true);
    box.applyFont(font);
    EXPECT_EQ(boldRanges(*box.document()), (QStringList{"0+40"}));
}

}  // namespace
