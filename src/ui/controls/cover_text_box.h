#pragma once

#include <QFont>
#include <QString>
#include <QTextEdit>
#include <utility>
#include <vector>

namespace platform {
class Dialogs;
}

namespace ui {

// The editor's cover text box ("rtfCover"). The stored cover is RTF; a plain text (as the
// composer stores it) is shown in the box's current formatting. Every operation that formats
// the text leaves the caret at the start, as the editor expects.
class CoverTextBox : public QTextEdit {
    Q_OBJECT
  public:
    // Start and length of a performer name in the composed plain text, where a "\r\n" counts
    // as two characters.
    using BoldRanges = std::vector<std::pair<int, int>>;

    explicit CoverTextBox(QWidget* parent = nullptr);

    void setStoredText(const QString& stored);
    // RTF, or "" when there is no text: an empty cover is stored as "".
    QString storedText() const;

    // Arial, plain; 10 points left-aligned for the format "cd-rom" (any letter case), else 9
    // points centred.
    void setDefaultFont(const QString& format);
    void selectAllIfNone();
    // Nothing bold, then each range bold. The ranges are kept for later font changes.
    void boldPerformers(const BoldRanges& ranges);
    // What follows the font dialog: the font on the selection (all when none); without bold the
    // performers are set bold again.
    void applyFont(const QFont& font);
    // The font dialog (sizes 6 to 14) and then applyFont; false when it was cancelled.
    bool chooseFont(platform::Dialogs& dialogs);
    // On the selection (all when none): first lines at the left edge, following lines indented,
    // one tab stop. Lengths in twips.
    void setHangingIndent(int indentTwips, int tabTwips);
    // The selection (all when none) as RTF, Qt's rich text and plain text.
    void copyToClipboard();

  protected:
    // Tab types a tab; Ctrl+Tab and Ctrl+Shift+Tab go on to the next and the previous control.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void caretToStart();
    int documentPosition(int composedOffset) const;

    BoldRanges lastBoldRanges_;
    // The plain text last set, whose "\r\n" line ends are one character in the document.
    QString composedText_;
};

}  // namespace ui
