#include <QDateTime>
#include <cmath>

#include "engine/jet_format.h"
#include "engine/jet_functions.h"
#include "engine/jet_sql_values.h"

namespace engine {

double roundHalfToEven(double value) {
    const double lower = std::floor(value);
    const double rest = value - lower;
    if (rest < 0.5)
        return lower;
    if (rest > 0.5)
        return lower + 1;
    return std::fmod(lower, 2.0) == 0 ? lower : lower + 1;
}

double jetVal(const QString& text) {
    QString compact;
    for (QChar c : text) {
        if (c != u' ' && c != u'\t' && c != u'\n' && c != u'\r')
            compact += c;
    }
    qsizetype end = 0;
    auto digits = [&] {
        const qsizetype from = end;
        while (end < compact.size() && compact[end] >= u'0' && compact[end] <= u'9')
            ++end;
        return end > from;
    };
    if (end < compact.size() && (compact[end] == u'+' || compact[end] == u'-'))
        ++end;
    bool any = digits();
    if (end < compact.size() && compact[end] == u'.') {
        ++end;
        any = digits() || any;
    }
    if (!any)
        return 0;
    const qsizetype mantissaEnd = end;
    if (end < compact.size() && (compact[end] == u'e' || compact[end] == u'E')) {
        ++end;
        if (end < compact.size() && (compact[end] == u'+' || compact[end] == u'-'))
            ++end;
        if (!digits())
            end = mantissaEnd;
    }
    return compact.left(end).toDouble();
}

namespace {

using namespace sqlvalue;

// The number of a text made of 1 to 15 decimal digits and nothing else (a year, a count), which
// a double holds exactly; nothing for any other text.
std::optional<qint64> plainDigits(sqlite3_value* v) {
    constexpr int kMaxDigits = 15;
    const auto* bytes = sqlite3_value_text(v);
    const int size = sqlite3_value_bytes(v);
    if (bytes == nullptr || size < 1 || size > kMaxDigits)
        return std::nullopt;
    qint64 value = 0;
    for (int i = 0; i < size; ++i) {
        if (bytes[i] < '0' || bytes[i] > '9')
            return std::nullopt;
        value = value * 10 + (bytes[i] - '0');
    }
    return value;
}

void valFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (isNull(argv[0]))
        return sqlite3_result_null(ctx);
    const int type = sqlite3_value_type(argv[0]);
    if (type == SQLITE_INTEGER || type == SQLITE_FLOAT)
        return sqlite3_result_value(ctx, argv[0]);
    // Plain digits skip the decoding into a QString: TempSource's build reads every year so.
    if (const auto digits = plainDigits(argv[0]))
        return sqlite3_result_int64(ctx, *digits);
    resultNumber(ctx, jetVal(text(argv[0])));
}

// A condition is true when it is a non-zero number; Null is false.
void iifFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    bool condition = false;
    if (!isNull(argv[0])) {
        const auto n = number(argv[0]);
        if (!n)
            return sqlite3_result_error(ctx, "Type mismatch", -1);
        condition = *n != 0;
    }
    sqlite3_result_value(ctx, argv[condition ? 1 : 2]);
}

// Nz(value[, replacement]): without a replacement Null reads as the empty text.
void nzFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (!isNull(argv[0]))
        return sqlite3_result_value(ctx, argv[0]);
    if (argc == 2)
        return sqlite3_result_value(ctx, argv[1]);
    sqlite3_result_text(ctx, "", 0, SQLITE_STATIC);
}

void cstrFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (isNull(argv[0]))
        return sqlite3_result_null(ctx);
    if (sqlite3_value_type(argv[0]) == SQLITE_FLOAT) {
        return resultText(ctx, QString::number(sqlite3_value_double(argv[0]), 'g', 15));
    }
    resultText(ctx, text(argv[0]));
}

// CInt and CLng: round halves to even and refuse values outside the type's range.
template <qint64 kMin, qint64 kMax>
void wholeConversion(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (isNull(argv[0]))
        return sqlite3_result_null(ctx);
    const auto n = number(argv[0]);
    if (!n)
        return sqlite3_result_error(ctx, "Type mismatch", -1);
    const double rounded = roundHalfToEven(*n);
    if (rounded < double(kMin) || rounded > double(kMax)) {
        return sqlite3_result_error(ctx, "Overflow", -1);
    }
    sqlite3_result_int64(ctx, qint64(rounded));
}

// Int(x): the largest whole number not above x (Int(-1.5) is -2).
void intFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (isNull(argv[0]))
        return sqlite3_result_null(ctx);
    const auto n = number(argv[0]);
    if (!n)
        return sqlite3_result_error(ctx, "Type mismatch", -1);
    resultNumber(ctx, std::floor(*n));
}

void formatFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (isNull(argv[0]))
        return sqlite3_result_null(ctx);
    const QString pattern = argc == 2 && !isNull(argv[1]) ? text(argv[1]) : QString();
    resultText(ctx, formatJetValue(variant(argv[0]), pattern));
}

// Year, Month and Day of a stored date.
template <int (QDate::*part)() const>
void datePartFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (isNull(argv[0]))
        return sqlite3_result_null(ctx);
    const auto date = dateFromStoredText(text(argv[0]));
    if (!date)
        return sqlite3_result_error(ctx, "Type mismatch", -1);
    sqlite3_result_int(ctx, (date->date().*part)());
}

void nowFunction(sqlite3_context* ctx, int, sqlite3_value**) {
    resultText(ctx, QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
}

void dateFunction(sqlite3_context* ctx, int, sqlite3_value**) {
    resultText(ctx, QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd")));
}

struct FunctionEntry {
    const char* name;
    int argc;
    void (*function)(sqlite3_context*, int, sqlite3_value**);
    bool deterministic = true;
};

const FunctionEntry kValueFunctions[] = {
    {"Val", 1, valFunction},
    {"IIf", 3, iifFunction},
    {"Nz", 1, nzFunction},
    {"Nz", 2, nzFunction},
    {"CStr", 1, cstrFunction},
    {"CInt", 1, wholeConversion<-32768, 32767>},
    {"CLng", 1, wholeConversion<-2147483648LL, 2147483647LL>},
    {"Int", 1, intFunction},
    {"format", 1, formatFunction},
    {"format", 2, formatFunction},
    {"Year", 1, datePartFunction<&QDate::year>},
    {"Month", 1, datePartFunction<&QDate::month>},
    {"Day", 1, datePartFunction<&QDate::day>},
    {"Now", 0, nowFunction, false},
    {"Date", 0, dateFunction, false},
};

}  // namespace

void registerJetValueFunctions(sqlite3* db) {
    for (const FunctionEntry& f : kValueFunctions) {
        const int flags = SQLITE_UTF8 | (f.deterministic ? SQLITE_DETERMINISTIC : 0);
        sqlite3_create_function_v2(db, f.name, f.argc, flags, nullptr, f.function, nullptr, nullptr,
                                   nullptr);
    }
}

}  // namespace engine
