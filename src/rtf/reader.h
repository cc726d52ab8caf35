#pragma once

#include <QByteArray>
#include <QColor>
#include <QString>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>
#include <map>
#include <memory>
#include <vector>

#include "rtf/code_page.h"
#include "rtf/reader_state.h"
#include "rtf/tokenizer.h"

class QTextDocument;

namespace rtf {

// Reads RTF into an empty document, paragraph by paragraph. Paragraph formatting is taken when
// a paragraph ends; a last paragraph left empty after the final \par is not a paragraph of its
// own (word processors end every paragraph, the last one too, with \par).
class Reader {
  public:
    explicit Reader(QTextDocument& document);
    void read(const QString& source);

  private:
    struct Font {
        QString family;
        int codePage = 0;  // 0: the document's
    };

    void handle(const Token& token);
    void openGroup();
    void closeGroup();
    void controlWord(const Token& token);
    bool documentWord(const QString& word, bool hasParameter, int parameter);
    bool characterWord(const QString& word, bool hasParameter, int parameter);
    bool paragraphWord(const QString& word, int parameter);
    bool tableWord(const QString& word, int parameter);
    bool specialCharacterWord(const QString& word);
    void controlSymbol(QChar symbol);
    void textCharacter(QChar character);
    void hexByte(int byte);
    void unicodeCharacter(int parameter);

    void appendText(const QString& text);
    void decodeBytes();
    void flushText();
    void ensureBlock();
    void endParagraph();
    void finish();
    void commitFont();
    void commitColor();

    int currentCodePage() const;
    const CodePage& codePage(int number);
    QString familyOf(int font) const;
    QTextCharFormat charFormat() const;
    QTextBlockFormat blockFormat() const;

    QTextCursor cursor_;
    GroupState state_;
    std::vector<GroupState> stack_;
    int overflowDepth_ = 0;
    int skipRemaining_ = 0;
    bool needBlock_ = false;
    bool done_ = false;

    int documentCodePage_ = 1252;
    int defaultFont_ = 0;
    std::map<int, Font> fonts_;
    std::map<int, std::unique_ptr<CodePage>> codePages_;
    std::vector<QColor> colors_;

    // The font table entry being read.
    int fontNumber_ = 0;
    Font font_;
    QString fontName_;
    // The colour table entry being read.
    int red_ = 0, green_ = 0, blue_ = 0;
    bool colorGiven_ = false;

    QByteArray pendingBytes_;
    int pendingCodePage_ = 0;
    QString pendingText_;
};

}  // namespace rtf
