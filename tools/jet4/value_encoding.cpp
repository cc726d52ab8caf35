#include "jet4/value_encoding.h"

#include "jet4/cp1252.h"
#include "jet4/format.h"

#include <QDate>
#include <QDateTime>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace jet4::encoding {
namespace {

[[noreturn]] void reject(const Column& column, const QString& why) {
    throw std::runtime_error(QStringLiteral("column %1: %2").arg(column.name, why).toStdString());
}

qint64 wholeNumber(const Column& column, const QVariant& value, qint64 lowest, qint64 highest) {
    bool ok = false;
    const qint64 n = value.toLongLong(&ok);
    if (!ok || (value.typeId() == QMetaType::Double && value.toDouble() != double(n)))
        reject(column, QStringLiteral("'%1' is not a whole number").arg(value.toString()));
    if (n < lowest || n > highest)
        reject(column, QStringLiteral("%1 is out of range").arg(n));
    return n;
}

double number(const Column& column, const QVariant& value) {
    bool ok = false;
    const double d = value.toDouble(&ok);
    if (!ok)
        reject(column, QStringLiteral("'%1' is not a number").arg(value.toString()));
    return d;
}

void store(char* dst, std::uint64_t v, int size) {
    for (int i = 0; i < size; ++i)
        dst[i] = char((v >> (8 * i)) & 0xff);
}

template <typename T>
void storeBits(char* dst, T v) {
    std::memcpy(dst, &v, sizeof v);  // the file is little-endian, like the targets we build for
}

bool fitsOneByteForm(const QString& text) {
    for (QChar c : text) {
        if (c.unicode() == 0 || c.unicode() > 0xff)
            return false;
    }
    return text.size() > 2;  // below three characters the marker costs more than it saves
}

QByteArray utf16le(const QString& text) {
    QByteArray out(text.size() * 2, Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i)
        format::put16(out, int(i * 2), text[i].unicode());
    return out;
}

}  // namespace

std::uint8_t typeCode(Type type) {
    switch (type) {
        case Type::Boolean:
            return 0x01;
        case Type::Byte:
            return 0x02;
        case Type::Integer:
            return 0x03;
        case Type::Long:
            return 0x04;
        case Type::Currency:
            return 0x05;
        case Type::Single:
            return 0x06;
        case Type::Double:
            return 0x07;
        case Type::DateTime:
            return 0x08;
        case Type::Text:
            return 0x0a;
        case Type::Ole:
            return 0x0b;
        case Type::Memo:
            return 0x0c;
    }
    return 0;
}

bool isFixed(Type type) {
    return type != Type::Text && type != Type::Memo && type != Type::Ole;
}

int fixedSize(Type type) {
    switch (type) {
        case Type::Boolean:
            return 0;
        case Type::Byte:
            return 1;
        case Type::Integer:
            return 2;
        case Type::Long:
        case Type::Single:
            return 4;
        case Type::Currency:
        case Type::Double:
        case Type::DateTime:
            return 8;
        default:
            return 0;
    }
}

int textCapacity(const Column& column) {
    return column.size > 0 ? column.size : 255;
}

int definedLength(const Column& column, Format format) {
    switch (column.type) {
        case Type::Boolean:
            return 1;
        case Type::Text:
            return textCapacity(column) * (format == Format::Jet3 ? 1 : 2);
        case Type::Memo:
        case Type::Ole:
            return 0;
        default:
            return fixedSize(column.type);
    }
}

double toJetDate(const QVariant& value) {
    static const QDate epoch(1899, 12, 30);
    QDateTime when;
    if (value.typeId() == QMetaType::QDate)
        when = QDateTime(value.toDate(), QTime(0, 0));
    else if (value.typeId() == QMetaType::QDateTime)
        when = value.toDateTime();
    if (!when.isValid())
        throw std::runtime_error("not a date: " + value.toString().toStdString());
    const double days = double(epoch.daysTo(when.date()));
    const double fraction = when.time().msecsSinceStartOfDay() / 86400000.0;
    // Before the epoch the time of day still counts forward from midnight.
    return days < 0 ? days - fraction : days + fraction;
}

void encodeFixed(const Column& column, const QVariant& value, char* dst) {
    switch (column.type) {
        case Type::Boolean:
            break;
        case Type::Byte:
            store(dst, std::uint64_t(wholeNumber(column, value, 0, 255)), 1);
            break;
        case Type::Integer:
            store(dst, std::uint64_t(wholeNumber(column, value, -32768, 32767)), 2);
            break;
        case Type::Long:
            store(dst,
                  std::uint64_t(wholeNumber(column, value, std::numeric_limits<qint32>::min(),
                                            std::numeric_limits<qint32>::max())),
                  4);
            break;
        case Type::Currency: {
            const double scaled = std::round(number(column, value) * 10000.0);
            if (!(std::fabs(scaled) < 9.2e18))
                reject(column, QStringLiteral("currency out of range"));
            store(dst, std::uint64_t(qint64(scaled)), 8);
            break;
        }
        case Type::Single:
            storeBits(dst, float(number(column, value)));
            break;
        case Type::Double:
            storeBits(dst, number(column, value));
            break;
        case Type::DateTime: {
            try {
                storeBits(dst, toJetDate(value));
            } catch (const std::runtime_error& e) {
                reject(column, QString::fromStdString(e.what()));
            }
            break;
        }
        default:
            reject(column, QStringLiteral("not a fixed-length column"));
    }
}

namespace {

QByteArray cp1252(const Column& column, const QString& text) {
    try {
        return toCp1252(text);
    } catch (const std::runtime_error& e) {
        reject(column, QString::fromStdString(e.what()));
    }
}

}  // namespace

QByteArray encodeText(const Column& column, const QVariant& value, Format format) {
    const QString text = value.toString();
    if (text.size() > textCapacity(column))
        reject(column, QStringLiteral("text longer than %1 characters").arg(textCapacity(column)));
    if (format == Format::Jet3)
        return cp1252(column, text);
    if (!fitsOneByteForm(text))
        return utf16le(text);
    QByteArray out;
    out.reserve(text.size() + 2);
    out.append(char(0xff));
    out.append(char(0xfe));
    for (QChar c : text)
        out.append(char(c.unicode()));
    return out;
}

QByteArray encodeLongValue(const Column& column, const QVariant& value, Format format) {
    if (column.type == Type::Ole)
        return value.toByteArray();
    if (format == Format::Jet3)
        return cp1252(column, value.toString());
    return utf16le(value.toString());
}

}  // namespace jet4::encoding
