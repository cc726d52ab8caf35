#include "ui/controls/cover_text_box.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocumentFragment>
#include <algorithm>

#include "platform/dialogs.h"
#include "rtf/rtf.h"
#include "store/compilation_queries.h"

namespace ui {

namespace {

constexpr int kSmallestFontSize = 6;
constexpr int kLargestFontSize = 14;

QTextCharFormat fontFormat(const QString& family, double points, bool bold, bool italic,
                           bool strikeOut, bool underline) {
    QTextCharFormat format;
    format.setFontFamilies({family});
    format.setFontPointSize(points);
    format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(italic);
    format.setFontStrikeOut(strikeOut);
    format.setFontUnderline(underline);
    return format;
}

QTextCharFormat weightFormat(bool bold) {
    QTextCharFormat format;
    format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
    return format;
}

}  // namespace

CoverTextBox::CoverTextBox(QWidget* parent) : QTextEdit(parent) {
    setObjectName(QStringLiteral("rtfCover"));
    setAcceptRichText(true);
}

void CoverTextBox::setStoredText(const QString& stored) {
    if (rtf::isRtf(stored)) {
        composedText_.clear();
        rtf::readInto(stored, *document());
        caretToStart();
        return;
    }
    // A plain text takes the formatting the box has at its start (setDefaultFont's, say).
    const QTextCursor start(document());
    const QTextCharFormat charFormat = start.charFormat();
    const QTextBlockFormat blockFormat = start.blockFormat();
    composedText_ = stored;
    rtf::readInto(stored, *document());
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    all.setCharFormat(charFormat);
    all.setBlockCharFormat(charFormat);
    all.setBlockFormat(blockFormat);
    caretToStart();
}

QString CoverTextBox::storedText() const {
    return toPlainText().isEmpty() ? QString() : rtf::write(*document());
}

void CoverTextBox::setDefaultFont(const QString& format) {
    selectAllIfNone();
    const bool cdRom = store::isCdRomCover(format);
    const QTextCharFormat font =
        fontFormat(QStringLiteral("Arial"), cdRom ? 10 : 9, false, false, false, false);
    QTextBlockFormat alignment;
    alignment.setAlignment(cdRom ? Qt::AlignLeft : Qt::AlignHCenter);
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    cursor.mergeCharFormat(font);
    cursor.mergeBlockCharFormat(font);  // an empty box keeps the font for what comes
    cursor.mergeBlockFormat(alignment);
    cursor.endEditBlock();
    caretToStart();
}

void CoverTextBox::selectAllIfNone() {
    if (textCursor().hasSelection()) {
        return;
    }
    QTextCursor cursor = textCursor();
    cursor.select(QTextCursor::Document);
    setTextCursor(cursor);
}

void CoverTextBox::boldPerformers(const BoldRanges& ranges) {
    lastBoldRanges_ = ranges;
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.mergeCharFormat(weightFormat(false));
    const int end = document()->characterCount() - 1;
    for (const auto& [start, length] : ranges) {
        const int from = std::clamp(documentPosition(start), 0, end);
        const int to = std::clamp(documentPosition(start + length), 0, end);
        if (length <= 0 || to <= from) {
            continue;
        }
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(weightFormat(true));
    }
    cursor.endEditBlock();
    caretToStart();
}

void CoverTextBox::applyFont(const QFont& font) {
    selectAllIfNone();
    textCursor().mergeCharFormat(fontFormat(font.family(), font.pointSizeF(), font.bold(),
                                            font.italic(), font.strikeOut(), font.underline()));
    caretToStart();
    if (!font.bold()) {
        boldPerformers(lastBoldRanges_);  // the performer names keep their bold face
    }
}

bool CoverTextBox::chooseFont(platform::Dialogs& dialogs) {
    const std::optional<QFont> font = dialogs.chooseFont(platform::FontRequest{
        QString(), currentCharFormat().font(), kSmallestFontSize, kLargestFontSize});
    if (!font) {
        return false;
    }
    applyFont(*font);
    return true;
}

void CoverTextBox::setHangingIndent(int indentTwips, int tabTwips) {
    selectAllIfNone();
    QTextBlockFormat format;
    format.setLeftMargin(indentTwips / rtf::kTwipsPerUnit);
    format.setTextIndent(-indentTwips / rtf::kTwipsPerUnit);
    format.setTabPositions({QTextOption::Tab(tabTwips / rtf::kTwipsPerUnit, QTextOption::LeftTab)});
    textCursor().mergeBlockFormat(format);
    caretToStart();
}

void CoverTextBox::copyToClipboard() {
    selectAllIfNone();
    const QTextCursor selection = textCursor();
    const bool whole = selection.selectionStart() == 0 &&
                       selection.selectionEnd() >= document()->characterCount() - 1;
    QTextDocument part;
    part.setDefaultFont(document()->defaultFont());
    if (!whole) {
        QTextCursor(&part).insertFragment(selection.selection());
    }
    const QTextDocument& copied = whole ? *document() : part;
    const QByteArray rtfBytes = rtf::write(copied).toLatin1();
    auto* data = new QMimeData;
    data->setData(QStringLiteral("text/rtf"), rtfBytes);
    data->setData(QStringLiteral("application/rtf"), rtfBytes);
    data->setHtml(copied.toHtml());
    data->setText(copied.toPlainText());
    QGuiApplication::clipboard()->setMimeData(data);
    caretToStart();
}

void CoverTextBox::caretToStart() {
    QTextCursor cursor = textCursor();
    cursor.setPosition(0);
    setTextCursor(cursor);
}

// The composed text ends its lines with "\r\n" (two characters) where the document has one
// paragraph break.
int CoverTextBox::documentPosition(int composedOffset) const {
    int pairs = 0;
    const int limit = std::min<int>(composedOffset, static_cast<int>(composedText_.size()));
    for (int i = 0; i + 1 < limit; ++i) {
        if (composedText_[i] == u'\r' && composedText_[i + 1] == u'\n') {
            ++pairs;
        }
    }
    return composedOffset - pairs;
}

void CoverTextBox::keyPressEvent(QKeyEvent* event) {
    const bool tab = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    if (tab && event->modifiers().testFlag(Qt::ControlModifier)) {
        const bool back = event->key() == Qt::Key_Backtab || event->modifiers() & Qt::ShiftModifier;
        // QTextEdit's own refuses to move the focus while Tab types a tab.
        QWidget::focusNextPrevChild(!back);
        event->accept();
        return;
    }
    QTextEdit::keyPressEvent(event);
}

}  // namespace ui
