#include "rtf/reader.h"

#include <QSet>
#include <QTextDocument>
#include <algorithm>

#include "rtf/rtf.h"

namespace rtf {

namespace {

constexpr std::size_t kMaxDepth = 256;
constexpr int kMaxTabs = 64;
constexpr int kMaxTwips = 31680;  // 22 inches, the widest page Word accepts
constexpr int kMaxHalfPoints = 3276;

// Destinations whose text is not part of the document. Others are announced by "\*".
const QSet<QString>& skippedDestinations() {
    static const QSet<QString> names = {"stylesheet",
                                        "info",
                                        "pict",
                                        "object",
                                        "header",
                                        "footer",
                                        "headerl",
                                        "headerr",
                                        "headerf",
                                        "footerl",
                                        "footerr",
                                        "footerf",
                                        "footnote",
                                        "fldinst",
                                        "listtable",
                                        "revtbl",
                                        "listoverridetable",
                                        "rsidtbl",
                                        "xmlnstbl",
                                        "filetbl",
                                        "themedata",
                                        "datastore",
                                        "colorschememapping",
                                        "latentstyles",
                                        "pn",
                                        "nonshppict",
                                        "shpinst",
                                        "author",
                                        "operator",
                                        "title",
                                        "subject",
                                        "keywords",
                                        "comment",
                                        "doccomm",
                                        "company"};
    return names;
}

const QSet<QString>& underlineWords() {
    static const QSet<QString> words = {
        "ul",         "uld",       "uldash",     "uldashd", "uldashdd", "uldb",
        "ulhwave",    "ulldash",   "ulth",       "ulthd",   "ulthdash", "ulthdashd",
        "ulthdashdd", "ulthldash", "ululdbwave", "ulw",     "ulwave"};
    return words;
}

// What QTextDocument takes as structure rather than text is left out of the text.
bool isTextCharacter(QChar c) {
    if (c == u'\t') {
        return true;
    }
    const char16_t u = c.unicode();
    return u >= 0x20 && u != 0x7F && u != 0x2029 && u != 0xFDD0 && u != 0xFDD1;
}

}  // namespace

Reader::Reader(QTextDocument& document) : cursor_(&document) {}

void Reader::read(const QString& source) {
    Tokenizer tokenizer(source);
    for (Token token = tokenizer.next(); token.kind != Token::Kind::End && !done_;
         token = tokenizer.next()) {
        handle(token);
    }
    finish();
}

void Reader::handle(const Token& token) {
    if (token.kind == Token::Kind::Open) {
        openGroup();
        return;
    }
    if (token.kind == Token::Kind::Close) {
        closeGroup();
        return;
    }
    if (skipRemaining_ > 0) {
        --skipRemaining_;  // the fallback of a \uN
        return;
    }
    switch (token.kind) {
        case Token::Kind::Word:
            controlWord(token);
            break;
        case Token::Kind::Symbol:
            controlSymbol(token.character);
            break;
        case Token::Kind::Hex:
            hexByte(token.parameter);
            break;
        case Token::Kind::Text:
            textCharacter(token.character);
            break;
        default:
            break;
    }
}

void Reader::openGroup() {
    skipRemaining_ = 0;
    flushText();
    if (stack_.size() >= kMaxDepth) {
        ++overflowDepth_;
        return;
    }
    stack_.push_back(state_);
}

void Reader::closeGroup() {
    skipRemaining_ = 0;
    flushText();
    if (overflowDepth_ > 0) {
        --overflowDepth_;
        return;
    }
    if (state_.destination == Destination::FontTable) {
        commitFont();
    }
    if (stack_.size() <= 1) {
        finish();  // the document's own group ends here
        return;
    }
    state_ = stack_.back();
    stack_.pop_back();
}

void Reader::controlWord(const Token& token) {
    flushText();
    const QString& word = token.word;
    const int parameter = token.parameter;
    if (state_.destination == Destination::Skip) {
        return;
    }
    if (word == u"fonttbl") {
        state_.destination = Destination::FontTable;
        return;
    }
    if (word == u"colortbl") {
        state_.destination = Destination::ColorTable;
        return;
    }
    if (skippedDestinations().contains(word)) {
        state_.destination = Destination::Skip;
        return;
    }
    if (state_.destination != Destination::Text) {
        tableWord(word, parameter);
        return;
    }
    documentWord(word, token.hasParameter, parameter) ||
        characterWord(word, token.hasParameter, parameter) || paragraphWord(word, parameter) ||
        specialCharacterWord(word);
}

bool Reader::documentWord(const QString& word, bool hasParameter, int parameter) {
    if (word == u"ansicpg" && hasParameter) {
        documentCodePage_ = codePage(parameter).number();
    } else if (word == u"ansi") {
        documentCodePage_ = 1252;
    } else if (word == u"mac") {
        documentCodePage_ = 10000;
    } else if (word == u"pc") {
        documentCodePage_ = 437;
    } else if (word == u"pca") {
        documentCodePage_ = 850;
    } else if (word == u"deff") {
        defaultFont_ = parameter;
    } else if (word == u"uc") {
        state_.unicodeSkip = std::clamp(parameter, 0, 16);
    } else if (word == u"u") {
        unicodeCharacter(parameter);
    } else {
        return false;
    }
    return true;
}

bool Reader::characterWord(const QString& word, bool hasParameter, int parameter) {
    CharacterState& c = state_.character;
    const bool on = !hasParameter || parameter != 0;
    if (word == u"plain") {
        c = CharacterState{};
    } else if (word == u"f") {
        c.font = parameter;
    } else if (word == u"fs") {
        c.halfPoints = std::clamp(hasParameter ? parameter : 24, 2, kMaxHalfPoints);
    } else if (word == u"b") {
        c.bold = on;
    } else if (word == u"i") {
        c.italic = on;
    } else if (word == u"strike" || word == u"striked") {
        c.strike = on;
    } else if (word == u"ulnone") {
        c.underline = false;
    } else if (underlineWords().contains(word)) {
        c.underline = on;
    } else if (word == u"cf") {
        c.color = std::max(parameter, 0);
    } else {
        return false;
    }
    return true;
}

bool Reader::paragraphWord(const QString& word, int parameter) {
    ParagraphState& p = state_.paragraph;
    if (word == u"par" || word == u"sect" || word == u"page" || word == u"row") {
        endParagraph();
    } else if (word == u"pard") {
        p = ParagraphState{};
    } else if (word == u"ql") {
        p.alignment = Qt::AlignLeft;
    } else if (word == u"qc") {
        p.alignment = Qt::AlignHCenter;
    } else if (word == u"qr") {
        p.alignment = Qt::AlignRight;
    } else if (word == u"qj") {
        p.alignment = Qt::AlignJustify;
    } else if (word == u"li") {
        p.leftTwips = std::clamp(parameter, -kMaxTwips, kMaxTwips);
    } else if (word == u"fi") {
        p.firstLineTwips = std::clamp(parameter, -kMaxTwips, kMaxTwips);
    } else if (word == u"tqr") {
        p.nextTabType = QTextOption::RightTab;
    } else if (word == u"tqc") {
        p.nextTabType = QTextOption::CenterTab;
    } else if (word == u"tqdec") {
        p.nextTabType = QTextOption::DelimiterTab;
    } else if (word == u"tx") {
        if (p.tabs.size() < kMaxTabs) {
            const QChar delimiter = p.nextTabType == QTextOption::DelimiterTab ? u'.' : QChar();
            p.tabs.append(
                QTextOption::Tab(std::clamp(parameter, 0, kMaxTwips), p.nextTabType, delimiter));
        }
        p.nextTabType = QTextOption::LeftTab;
    } else {
        return false;
    }
    return true;
}

bool Reader::tableWord(const QString& word, int parameter) {
    if (state_.destination == Destination::ColorTable) {
        if (word == u"red" || word == u"green" || word == u"blue") {
            int& component = word == u"red" ? red_ : (word == u"green" ? green_ : blue_);
            component = std::clamp(parameter, 0, 255);
            colorGiven_ = true;
            return true;
        }
        return false;
    }
    if (word == u"f") {
        commitFont();
        fontNumber_ = parameter;
    } else if (word == u"fcharset") {
        font_.codePage = codePageOfCharset(parameter);
    } else if (word == u"cpg") {
        font_.codePage = codePage(parameter).number();
    } else {
        return false;
    }
    return true;
}

bool Reader::specialCharacterWord(const QString& word) {
    static const std::map<QString, QChar> characters = {{"line", QChar::LineSeparator},
                                                        {"tab", u'\t'},
                                                        {"cell", u'\t'},
                                                        {"emdash", QChar(0x2014)},
                                                        {"endash", QChar(0x2013)},
                                                        {"bullet", QChar(0x2022)},
                                                        {"lquote", QChar(0x2018)},
                                                        {"rquote", QChar(0x2019)},
                                                        {"ldblquote", QChar(0x201C)},
                                                        {"rdblquote", QChar(0x201D)},
                                                        {"emspace", QChar(0x2003)},
                                                        {"enspace", QChar(0x2002)}};
    const auto found = characters.find(word);
    if (found == characters.end()) {
        return false;  // a word this reader does not know: ignored
    }
    appendText(QString(found->second));
    return true;
}

void Reader::controlSymbol(QChar symbol) {
    flushText();
    if (state_.destination == Destination::Skip) {
        return;
    }
    if (symbol == u'*') {
        state_.destination = Destination::Skip;  // a destination this reader may not know
    } else if (symbol == u'\\' || symbol == u'{' || symbol == u'}') {
        textCharacter(symbol);
    } else if (symbol == u'~') {
        appendText(QString(QChar(0x00A0)));
    } else if (symbol == u'_') {
        appendText(QString(QChar(0x2011)));
    } else if (symbol == u'\r' || symbol == u'\n') {
        if (state_.destination == Destination::Text) {
            endParagraph();
        }
    }
}

void Reader::textCharacter(QChar character) {
    if (state_.destination == Destination::Skip) {
        return;
    }
    if (character == u';' && state_.destination == Destination::FontTable) {
        commitFont();
        return;
    }
    if (state_.destination == Destination::ColorTable) {
        if (character == u';') {
            commitColor();
        }
        return;
    }
    appendText(QString(character));
}

void Reader::hexByte(int byte) {
    if (state_.destination == Destination::Skip || state_.destination == Destination::ColorTable) {
        return;
    }
    const int page = currentCodePage();
    if (!pendingBytes_.isEmpty() && page != pendingCodePage_) {
        decodeBytes();
    }
    pendingCodePage_ = page;
    pendingBytes_.append(static_cast<char>(byte));
}

void Reader::unicodeCharacter(int parameter) {
    const int code = parameter < 0 ? parameter + 65536 : parameter;
    if (code >= 0 && code <= 0xFFFF) {
        appendText(QString(QChar(static_cast<char16_t>(code))));
    }
    skipRemaining_ = state_.unicodeSkip;
}

void Reader::appendText(const QString& text) {
    decodeBytes();
    if (state_.destination == Destination::FontTable) {
        fontName_ += text;
    } else if (state_.destination == Destination::Text) {
        for (QChar c : text) {
            if (isTextCharacter(c)) {
                pendingText_ += c;
            }
        }
    }
}

void Reader::decodeBytes() {
    if (pendingBytes_.isEmpty()) {
        return;
    }
    const QByteArray bytes = pendingBytes_;
    pendingBytes_.clear();
    appendText(codePage(pendingCodePage_).decode(bytes));
}

void Reader::flushText() {
    decodeBytes();
    if (pendingText_.isEmpty()) {
        return;
    }
    ensureBlock();
    cursor_.insertText(pendingText_, charFormat());
    pendingText_.clear();
}

void Reader::ensureBlock() {
    if (needBlock_) {
        cursor_.insertBlock();
        needBlock_ = false;
    }
}

void Reader::endParagraph() {
    flushText();
    ensureBlock();
    cursor_.setBlockFormat(blockFormat());
    cursor_.setBlockCharFormat(charFormat());
    needBlock_ = true;
}

void Reader::finish() {
    if (done_) {
        return;
    }
    flushText();
    if (!needBlock_) {
        cursor_.setBlockFormat(blockFormat());
        cursor_.setBlockCharFormat(charFormat());
    }
    done_ = true;
}

void Reader::commitFont() {
    decodeBytes();
    const QString family = fontName_.trimmed();
    if (!family.isEmpty()) {
        font_.family = family;
        fonts_[fontNumber_] = font_;
    }
    fontName_.clear();
    font_ = Font{};
}

void Reader::commitColor() {
    colors_.push_back(colorGiven_ ? QColor(red_, green_, blue_) : QColor());
    red_ = green_ = blue_ = 0;
    colorGiven_ = false;
}

int Reader::currentCodePage() const {
    if (state_.destination == Destination::FontTable) {
        return font_.codePage != 0 ? font_.codePage : documentCodePage_;
    }
    const auto found =
        fonts_.find(state_.character.font < 0 ? defaultFont_ : state_.character.font);
    if (found != fonts_.end() && found->second.codePage != 0) {
        return found->second.codePage;
    }
    return documentCodePage_;
}

const CodePage& Reader::codePage(int number) {
    auto& slot = codePages_[number];
    if (!slot) {
        slot = std::make_unique<CodePage>(number);
    }
    return *slot;
}

QString Reader::familyOf(int font) const {
    const auto found = fonts_.find(font < 0 ? defaultFont_ : font);
    return found != fonts_.end() ? found->second.family : QString();
}

QTextCharFormat Reader::charFormat() const {
    const CharacterState& c = state_.character;
    QTextCharFormat format;
    const QString family = familyOf(c.font);
    if (!family.isEmpty()) {
        format.setFontFamilies({family});
    }
    format.setFontPointSize(c.halfPoints / 2.0);
    format.setFontWeight(c.bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(c.italic);
    format.setFontUnderline(c.underline);
    format.setFontStrikeOut(c.strike);
    if (c.color > 0 && static_cast<std::size_t>(c.color) < colors_.size() &&
        colors_[c.color].isValid()) {
        format.setForeground(colors_[c.color]);
    }
    return format;
}

QTextBlockFormat Reader::blockFormat() const {
    const ParagraphState& p = state_.paragraph;
    QTextBlockFormat format;
    format.setAlignment(p.alignment);
    format.setLeftMargin(p.leftTwips / kTwipsPerUnit);
    format.setTextIndent(p.firstLineTwips / kTwipsPerUnit);
    QList<QTextOption::Tab> tabs;
    for (const QTextOption::Tab& tab : p.tabs) {
        tabs.append(QTextOption::Tab(tab.position / kTwipsPerUnit, tab.type, tab.delimiter));
    }
    format.setTabPositions(tabs);
    return format;
}

}  // namespace rtf
