#include "rtf/rtf.h"

#include <QTextCursor>
#include <QTextDocument>

#include "rtf/reader.h"
#include "rtf/writer.h"

namespace rtf {

bool isRtf(const QString& stored) {
    return stored.startsWith(QStringLiteral("{\\rtf"));
}

void readInto(const QString& stored, QTextDocument& document) {
    document.clear();
    if (!isRtf(stored)) {
        QString text = stored;
        text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
        document.setPlainText(text);
        return;
    }
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    Reader(document).read(stored);
    cursor.endEditBlock();
}

QString write(const QTextDocument& document) {
    return Writer(document).write();
}

}  // namespace rtf
