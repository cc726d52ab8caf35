#pragma once

#include <QString>
#include <ostream>

#include "query/field_values.h"

// Readable failure output for the value types of the query tests.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace query {

inline void PrintTo(const FieldValue& value, std::ostream* out) {
    static const char* const kinds[] = {"Empty", "Integer", "Currency", "Date", "Text", "YesNo"};
    *out << kinds[static_cast<int>(value.kind())] << "(\"" << value.toText().toStdString() << "\")";
}

}  // namespace query
