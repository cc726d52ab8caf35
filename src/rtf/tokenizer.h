#pragma once

#include <QString>

namespace rtf {

struct Token {
    enum class Kind { Open, Close, Word, Symbol, Hex, Text, End };
    Kind kind = Kind::End;
    QString word;  // Word: the control word's name
    bool hasParameter = false;
    int parameter = 0;  // Word: its number; Hex: the byte
    QChar character;    // Symbol: the character after the backslash; Text: the character
};

// Splits RTF into groups, control words, control symbols, hex bytes and text characters.
// Line breaks in the source are not text; \bin's data is stepped over. Every call advances, so a
// damaged text ends in End after at most its length in calls.
class Tokenizer {
  public:
    explicit Tokenizer(const QString& source) : source_(source) {}
    Token next();

  private:
    Token controlWord();
    Token afterBackslash();
    int hexDigit(int offset) const;

    const QString& source_;
    qsizetype pos_ = 0;
};

}  // namespace rtf
