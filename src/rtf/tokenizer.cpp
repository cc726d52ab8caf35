#include "rtf/tokenizer.h"

#include <algorithm>

namespace rtf {

namespace {

bool isAsciiLetter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// Readers cap words and numbers; longer ones are consumed but cut.
constexpr int kMaxWordLength = 32;
constexpr long long kParameterLimit = 1'000'000'000;

}  // namespace

Token Tokenizer::next() {
    while (pos_ < source_.size()) {
        const QChar c = source_[pos_];
        if (c == u'\r' || c == u'\n' || c == QChar(0)) {
            ++pos_;
            continue;
        }
        ++pos_;
        Token token;
        if (c == u'{') {
            token.kind = Token::Kind::Open;
        } else if (c == u'}') {
            token.kind = Token::Kind::Close;
        } else if (c == u'\\') {
            token = afterBackslash();
            if (token.kind == Token::Kind::Word && token.word == u"bin" && token.hasParameter) {
                pos_ += std::clamp<qsizetype>(token.parameter, 0, source_.size() - pos_);
                continue;
            }
        } else {
            token.kind = Token::Kind::Text;
            token.character = c;
        }
        return token;
    }
    return {};
}

Token Tokenizer::afterBackslash() {
    Token token;
    if (pos_ >= source_.size()) {
        return token;  // a lone backslash at the end
    }
    const QChar c = source_[pos_];
    if (isAsciiLetter(c)) {
        return controlWord();
    }
    ++pos_;
    const int high = c == u'\'' ? hexDigit(0) : -1;
    const int low = high >= 0 ? hexDigit(1) : -1;
    if (high >= 0 && low >= 0) {
        pos_ += 2;
        token.kind = Token::Kind::Hex;
        token.parameter = high * 16 + low;
        return token;
    }
    token.kind = Token::Kind::Symbol;
    token.character = c;
    return token;
}

Token Tokenizer::controlWord() {
    Token token;
    token.kind = Token::Kind::Word;
    const qsizetype start = pos_;
    while (pos_ < source_.size() && isAsciiLetter(source_[pos_])) {
        ++pos_;
    }
    token.word = source_.mid(start, std::min<qsizetype>(pos_ - start, kMaxWordLength));
    bool negative = false;
    if (pos_ + 1 < source_.size() && source_[pos_] == u'-' && isAsciiDigit(source_[pos_ + 1])) {
        negative = true;
        ++pos_;
    }
    long long value = 0;
    while (pos_ < source_.size() && isAsciiDigit(source_[pos_])) {
        token.hasParameter = true;
        value = std::min(value * 10 + (source_[pos_].unicode() - u'0'), kParameterLimit);
        ++pos_;
    }
    token.parameter = static_cast<int>(negative ? -value : value);
    if (pos_ < source_.size() && source_[pos_] == u' ') {
        ++pos_;  // the delimiter belongs to the word
    }
    return token;
}

int Tokenizer::hexDigit(int offset) const {
    const qsizetype at = pos_ + offset;
    if (at >= source_.size()) {
        return -1;
    }
    const char16_t c = source_[at].unicode();
    if (c >= u'0' && c <= u'9') {
        return c - u'0';
    }
    if (c >= u'a' && c <= u'f') {
        return c - u'a' + 10;
    }
    if (c >= u'A' && c <= u'F') {
        return c - u'A' + 10;
    }
    return -1;
}

}  // namespace rtf
