#include "rtf/writer.h"

#include <QTextBlock>
#include <QTextDocument>
#include <cmath>

#include "rtf/rtf.h"

namespace rtf {

namespace {

QString familyOf(const QTextCharFormat& format, const QTextDocument& document) {
    const QString family = format.fontFamilies().toStringList().value(0);
    return family.isEmpty() ? document.defaultFont().family() : family;
}

int halfPointsOf(const QTextCharFormat& format, const QTextDocument& document) {
    double points = format.fontPointSize();
    if (points <= 0) {
        points = document.defaultFont().pointSizeF();
    }
    return points > 0 ? static_cast<int>(std::lround(points * 2)) : 24;
}

int twips(double units) {
    return static_cast<int>(std::lround(units * kTwipsPerUnit));
}

QString number(int value) {
    return QString::number(value);
}

}  // namespace

Writer::Writer(const QTextDocument& document) : document_(document) {}

QString Writer::write() {
    collectTables();
    out_ = header();
    for (QTextBlock block = document_.begin(); block.isValid(); block = block.next()) {
        writeBlock(block);
    }
    out_ += u'}';
    return out_;
}

void Writer::collectTables() {
    families_ = {document_.defaultFont().family()};
    for (QTextBlock block = document_.begin(); block.isValid(); block = block.next()) {
        // The formats in the order writeBlock writes them, so the tables list them that way.
        std::vector<QTextCharFormat> formats;
        if (block.begin().atEnd()) {
            formats.push_back(block.charFormat());
        }
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            formats.push_back(it.fragment().charFormat());
        }
        for (const QTextCharFormat& format : formats) {
            const QString family = familyOf(format, document_);
            if (!families_.contains(family)) {
                families_.append(family);
            }
            const QColor color = format.foreground().color();
            if (format.foreground().style() != Qt::NoBrush &&
                std::find(colors_.begin(), colors_.end(), color) == colors_.end()) {
                colors_.push_back(color);
            }
        }
    }
}

int Writer::fontIndex(const QTextCharFormat& format) const {
    return static_cast<int>(families_.indexOf(familyOf(format, document_)));
}

int Writer::colorIndex(const QTextCharFormat& format) const {
    if (format.foreground().style() == Qt::NoBrush) {
        return 0;
    }
    const auto found = std::find(colors_.begin(), colors_.end(), format.foreground().color());
    return found == colors_.end() ? 0 : static_cast<int>(found - colors_.begin()) + 1;
}

QString Writer::header() const {
    QString text = QStringLiteral("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl");
    for (qsizetype i = 0; i < families_.size(); ++i) {
        text += QStringLiteral("{\\f%1\\fnil\\fcharset0 ").arg(i);
        text += escaped(families_[i]) + QStringLiteral(";}");
    }
    text += u'}';
    if (!colors_.empty()) {
        text += QStringLiteral("{\\colortbl ;");
        for (const QColor& color : colors_) {
            text += QStringLiteral("\\red%1\\green%2\\blue%3;")
                        .arg(color.red())
                        .arg(color.green())
                        .arg(color.blue());
        }
        text += u'}';
    }
    return text + QStringLiteral("\r\n\\viewkind4\\uc1");
}

void Writer::writeBlock(const QTextBlock& block) {
    writeParagraphFormat(block.blockFormat());
    if (block.begin().atEnd()) {
        writeCharFormat(block.charFormat());  // an empty line keeps its font and size
    }
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        writeCharFormat(it.fragment().charFormat());
        out_ += escaped(it.fragment().text());
    }
    out_ += QStringLiteral("\\par\r\n");
}

void Writer::writeParagraphFormat(const QTextBlockFormat& format) {
    out_ += QStringLiteral("\\pard");
    const Qt::Alignment horizontal = format.alignment() & Qt::AlignHorizontal_Mask;
    if (horizontal & Qt::AlignJustify) {
        out_ += QStringLiteral("\\qj");
    } else if (horizontal & Qt::AlignHCenter) {
        out_ += QStringLiteral("\\qc");
    } else if (horizontal & (Qt::AlignRight | Qt::AlignTrailing)) {
        out_ += QStringLiteral("\\qr");
    }
    if (const int left = twips(format.leftMargin()); left != 0) {
        out_ += QStringLiteral("\\li") + number(left);
    }
    if (const int first = twips(format.textIndent()); first != 0) {
        out_ += QStringLiteral("\\fi") + number(first);
    }
    for (const QTextOption::Tab& tab : format.tabPositions()) {
        if (tab.type == QTextOption::RightTab) {
            out_ += QStringLiteral("\\tqr");
        } else if (tab.type == QTextOption::CenterTab) {
            out_ += QStringLiteral("\\tqc");
        } else if (tab.type == QTextOption::DelimiterTab) {
            out_ += QStringLiteral("\\tqdec");
        }
        out_ += QStringLiteral("\\tx") + number(twips(tab.position));
    }
}

void Writer::writeCharFormat(const QTextCharFormat& format) {
    out_ += QStringLiteral("\\plain\\f") + number(fontIndex(format)) + QStringLiteral("\\fs") +
            number(halfPointsOf(format, document_));
    if (format.fontWeight() > QFont::Medium) {
        out_ += QStringLiteral("\\b");
    }
    if (format.fontItalic()) {
        out_ += QStringLiteral("\\i");
    }
    if (format.fontUnderline()) {
        out_ += QStringLiteral("\\ul");
    }
    if (format.fontStrikeOut()) {
        out_ += QStringLiteral("\\strike");
    }
    if (const int color = colorIndex(format); color != 0) {
        out_ += QStringLiteral("\\cf") + number(color);
    }
    out_ += u' ';
}

QString Writer::escaped(const QString& text) const {
    QString out;
    for (QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'\\' || u == u'{' || u == u'}') {
            out += u'\\';
            out += c;
        } else if (u == u'\t') {
            out += QStringLiteral("\\tab ");
        } else if (c == QChar::LineSeparator) {
            out += QStringLiteral("\\line ");
        } else if (u >= 0x20 && u < 0x7F) {
            out += c;
        } else if (u < 0x20 || u == 0x7F) {
            continue;  // control characters are not text
        } else if (const auto bytes = c.isSurrogate() ? std::nullopt : codePage_.encode(u);
                   bytes && bytes->size() == 1) {
            out += QStringLiteral("\\'") +
                   QString::number(static_cast<unsigned char>(bytes->at(0)), 16)
                       .rightJustified(2, u'0');
        } else {
            // RTF's numbers are signed 16-bit; the fallback for readers without Unicode is "?".
            out += QStringLiteral("\\u") + number(static_cast<int16_t>(u)) + u'?';
        }
    }
    return out;
}

}  // namespace rtf
