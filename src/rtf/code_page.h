#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

namespace rtf {

// A Windows code page (1252, 1251, 932, ...) through ICU's converters. An unknown code page
// falls back to 1252, the RTF default.
class CodePage {
  public:
    explicit CodePage(int number);
    ~CodePage();
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    int number() const { return number_; }
    QString decode(const QByteArray& bytes) const;
    // The byte sequence of one character, or nothing when the code page has no such character.
    std::optional<QByteArray> encode(char32_t character) const;

  private:
    struct Converter;
    int number_;
    std::unique_ptr<Converter> converter_;
};

// The code page of an RTF font's \fcharset, or 0 when the charset says nothing about one
// (ANSI and symbol fonts follow the document's code page).
int codePageOfCharset(int charset);

}  // namespace rtf
