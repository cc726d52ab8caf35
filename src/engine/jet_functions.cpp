#include "engine/jet_functions.h"

#include <algorithm>
#include <string_view>

#include "engine/jet_collation.h"
#include "engine/jet_dialect.h"
#include "engine/jet_like.h"
#include "engine/jet_sql_values.h"

namespace engine {

namespace {

using namespace sqlvalue;

constexpr char kInvalidCall[] = "Invalid procedure call or argument";

std::string_view utf8(sqlite3_value* v) {
    const auto* data = reinterpret_cast<const char*>(sqlite3_value_text(v));
    return data ? std::string_view(data, size_t(sqlite3_value_bytes(v))) : std::string_view();
}

bool isAscii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) == 0; });
}

bool anyNull(int argc, sqlite3_value** argv) {
    for (int i = 0; i < argc; ++i) {
        if (isNull(argv[i]))
            return true;
    }
    return false;
}

// Reads a whole-number argument; reports a failure on the context when it is none.
std::optional<qint64> wholeArgument(sqlite3_context* ctx, sqlite3_value* v) {
    const auto n = number(v);
    if (!n) {
        sqlite3_result_error(ctx, "Type mismatch", -1);
        return std::nullopt;
    }
    return qint64(*n);
}

// Mid(text, start[, length]) with a 1-based start.
void midFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    const auto start = wholeArgument(ctx, argv[1]);
    if (!start)
        return;
    std::optional<qint64> length = qint64(-1);
    if (argc == 3 && !(length = wholeArgument(ctx, argv[2])))
        return;
    if (*start < 1 || (argc == 3 && *length < 0)) {
        return sqlite3_result_error(ctx, kInvalidCall, -1);
    }
    resultText(ctx, text(argv[0]).mid(*start - 1, *length));
}

void leftOrRight(sqlite3_context* ctx, sqlite3_value** argv, bool fromLeft) {
    if (anyNull(2, argv))
        return sqlite3_result_null(ctx);
    const auto count = wholeArgument(ctx, argv[1]);
    if (!count)
        return;
    if (*count < 0)
        return sqlite3_result_error(ctx, kInvalidCall, -1);
    const std::string_view bytes = utf8(argv[0]);
    if (isAscii(bytes)) {  // one byte a character: no need to decode
        const size_t n = std::min<size_t>(size_t(*count), bytes.size());
        const std::string_view part =
            fromLeft ? bytes.substr(0, n) : bytes.substr(bytes.size() - n);
        return sqlite3_result_text(ctx, part.data(), int(part.size()), SQLITE_TRANSIENT);
    }
    const QString s = text(argv[0]);
    resultText(ctx, fromLeft ? s.left(*count) : s.right(*count));
}

void leftFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    leftOrRight(ctx, argv, true);
}
void rightFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    leftOrRight(ctx, argv, false);
}

void lenFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (isNull(argv[0]))
        return sqlite3_result_null(ctx);
    sqlite3_result_int64(ctx, text(argv[0]).size());
}

// One-argument text functions that map a text to a text and Null to Null.
template <QString (*transform)(const QString&)>
void textMapFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (isNull(argv[0]))
        return sqlite3_result_null(ctx);
    resultText(ctx, transform(text(argv[0])));
}

QString upper(const QString& s) {
    return s.toUpper();
}
QString lower(const QString& s) {
    return s.toLower();
}

// Jet trims blanks only, not tabs or line breaks.
// Trim and its sisters remove blanks only; a blank is one byte in UTF-8 and never part of
// another character, so they work on the bytes.
template <bool fromLeft, bool fromRight>
void trimFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (isNull(argv[0]))
        return sqlite3_result_null(ctx);
    std::string_view bytes = utf8(argv[0]);
    while (fromLeft && !bytes.empty() && bytes.front() == ' ')
        bytes.remove_prefix(1);
    while (fromRight && !bytes.empty() && bytes.back() == ' ')
        bytes.remove_suffix(1);
    sqlite3_result_text(ctx, bytes.data(), int(bytes.size()), SQLITE_TRANSIENT);
}

// InStr([start, ]text, sought[, compare]): 1-based position, 0 when absent. Compare 0 is
// binary; the default, as in an Access database, ignores case.
void instrFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    const int shift = argc >= 3 ? 1 : 0;
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    std::optional<qint64> start = 1;
    if (shift && !(start = wholeArgument(ctx, argv[0])))
        return;
    if (*start < 1)
        return sqlite3_result_error(ctx, kInvalidCall, -1);
    std::optional<qint64> compare = 1;
    if (argc == 4 && !(compare = wholeArgument(ctx, argv[3])))
        return;
    const QString haystack = text(argv[shift]);
    const Qt::CaseSensitivity cs = *compare == 0 ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const qsizetype at =
        *start > haystack.size() + 1 ? -1 : haystack.indexOf(text(argv[shift + 1]), *start - 1, cs);
    sqlite3_result_int64(ctx, at + 1);
}

struct FunctionEntry {
    const char* name;
    int argc;
    void (*function)(sqlite3_context*, int, sqlite3_value**);
};

const FunctionEntry kTextFunctions[] = {
    {"Mid", 2, midFunction},
    {"Mid", 3, midFunction},
    {"Left", 2, leftFunction},
    {"Right", 2, rightFunction},
    {"Len", 1, lenFunction},
    {"UCase", 1, textMapFunction<upper>},
    {"LCase", 1, textMapFunction<lower>},
    {"Trim", 1, trimFunction<true, true>},
    {"LTrim", 1, trimFunction<true, false>},
    {"RTrim", 1, trimFunction<false, true>},
    {"InStr", 2, instrFunction},
    {"InStr", 3, instrFunction},
    {"InStr", 4, instrFunction},
};

}  // namespace

void registerJetTextFunctions(sqlite3* db) {
    for (const FunctionEntry& f : kTextFunctions) {
        sqlite3_create_function_v2(db, f.name, f.argc, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                   f.function, nullptr, nullptr, nullptr);
    }
}

void registerJetFunctions(sqlite3* db) {
    registerJetLike(db);
    registerJetCollation(db);
    registerJetTextFunctions(db);
    registerJetValueFunctions(db);
}

}  // namespace engine
