#include "cli/table_printer.h"

#include <QDate>
#include <QDateTime>

#include "engine/jet_dialect.h"

namespace cli {

namespace {

QString cellText(const QVariant& value) {
    if (!value.isValid() || value.isNull()) {
        return QString();
    }
    switch (value.typeId()) {
        case QMetaType::Bool:
            return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
        case QMetaType::QDate:
            return engine::isoDateText(value.toDate());
        case QMetaType::QDateTime:
            return engine::isoDateText(value.toDateTime());
        case QMetaType::Double:
            return QString::number(value.toDouble(), 'g', 15);
        default: {
            QString text = value.toString();
            text.replace(QLatin1Char('\t'), QLatin1Char(' '));
            text.replace(QLatin1Char('\n'), QLatin1Char(' '));
            text.remove(QLatin1Char('\r'));
            return text;
        }
    }
}

}  // namespace

void printRows(engine::Recordset& rows, QTextStream& out) {
    QStringList header;
    for (int i = 0; i < rows.fieldCount(); ++i) {
        header << rows.field(i).name;
    }
    out << header.join(QLatin1Char('\t')) << '\n';
    for (int r = 0; r < rows.recordCount(); ++r) {
        QStringList cells;
        for (const QVariant& value : rows.rowAt(r)) {
            cells << cellText(value);
        }
        out << cells.join(QLatin1Char('\t')) << '\n';
    }
    out.flush();
}

}  // namespace cli
