#pragma once

#include "jet4/jet4.h"

#include <QByteArray>
#include <QVariant>
#include <cstdint>

// How single values of each column type are stored in a row.
namespace jet4::encoding {

std::uint8_t typeCode(Type type);
bool isFixed(Type type);
// Bytes a fixed column takes in the fixed part of a row (0 for yes/no, kept in the null mask).
int fixedSize(Type type);
// Column length recorded in the table definition.
int definedLength(const Column& column, Format format);
int textCapacity(const Column& column);

// Writes a non-null fixed value at dst; throws std::runtime_error when it does not fit.
void encodeFixed(const Column& column, const QVariant& value, char* dst);
// Text as Jet 4 stores it: one byte a character behind the FF FE marker when every character
// allows it, otherwise UTF-16LE. Jet 3 stores cp1252.
QByteArray encodeText(const Column& column, const QVariant& value, Format format);
// Memo (Jet 4: UTF-16LE, Jet 3: cp1252) or OLE bytes of a long value.
QByteArray encodeLongValue(const Column& column, const QVariant& value, Format format);
// Days since 1899-12-30 with the time of day as fraction, as Jet keeps dates.
double toJetDate(const QVariant& value);

}  // namespace jet4::encoding
