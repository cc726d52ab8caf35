#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <vector>

#include "rtf/code_page.h"

class QTextBlock;
class QTextBlockFormat;
class QTextCharFormat;
class QTextDocument;

namespace rtf {

// Writes a document as RTF 1 in code page 1252: a font table of the families used, a colour
// table when text is coloured, then every block as one paragraph that ends with \par. Each run
// states its whole character formatting after \plain, so no run depends on the one before.
class Writer {
  public:
    explicit Writer(const QTextDocument& document);
    QString write();

  private:
    void collectTables();
    int fontIndex(const QTextCharFormat& format) const;
    int colorIndex(const QTextCharFormat& format) const;
    QString header() const;
    void writeBlock(const QTextBlock& block);
    void writeParagraphFormat(const QTextBlockFormat& format);
    void writeCharFormat(const QTextCharFormat& format);
    QString escaped(const QString& text) const;

    const QTextDocument& document_;
    CodePage codePage_{1252};
    QStringList families_;
    std::vector<QColor> colors_;
    QString out_;
};

}  // namespace rtf
