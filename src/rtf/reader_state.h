#pragma once

#include <QList>
#include <QTextOption>
#include <Qt>

namespace rtf {

// Where the text of a group goes.
enum class Destination { Text, FontTable, ColorTable, Skip };

struct CharacterState {
    int font = -1;        // index into the font table; -1: the default font
    int halfPoints = 24;  // RTF's default size, 12 points
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    int color = 0;  // index into the colour table; 0: automatic
};

struct ParagraphState {
    Qt::Alignment alignment = Qt::AlignLeft;
    int leftTwips = 0;
    int firstLineTwips = 0;
    QList<QTextOption::Tab> tabs;  // positions in twips until the block is formatted
    QTextOption::TabType nextTabType = QTextOption::LeftTab;
};

// What a group inherits from its parent and gives back when it closes.
struct GroupState {
    Destination destination = Destination::Text;
    CharacterState character;
    ParagraphState paragraph;
    int unicodeSkip = 1;  // \ucN: fallback characters that follow a \uN
};

}  // namespace rtf
