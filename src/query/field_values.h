#pragma once

#include <QDate>
#include <QString>
#include <QVariant>
#include <QtGlobal>
#include <variant>

#include "platform/dialogs.h"
#include "query/columns.h"
#include "query/currency.h"
#include "query/date_text.h"
#include "query/time_text.h"

namespace query {

// A typed value as checkValue returns it. "Empty" (no check was made) and the empty text
// (a check failed) are different values, although both are written as an empty text.
class FieldValue {
  public:
    // In the order of the alternatives held below.
    enum class Kind { Empty, Integer, Currency, Date, Text, YesNo };

    FieldValue() = default;
    static FieldValue fromInteger(qint16 value) { return of<qint16>(value); }
    static FieldValue fromCurrency(Currency value) { return of<Currency>(value); }
    static FieldValue fromDate(const QDate& value) { return of<QDate>(value); }
    static FieldValue fromText(const QString& value) { return of<QString>(value); }
    static FieldValue fromYesNo(bool value) { return of<bool>(value); }

    Kind kind() const { return static_cast<Kind>(value_.index()); }
    bool isEmpty() const { return kind() == Kind::Empty; }

    // Each accessor requires its kind and throws std::bad_variant_access otherwise.
    qint16 integer() const { return std::get<qint16>(value_); }
    Currency currency() const { return std::get<Currency>(value_); }
    QDate date() const { return std::get<QDate>(value_); }
    QString text() const { return std::get<QString>(value_); }
    bool yesNo() const { return std::get<bool>(value_); }

    // The value as it is written back into a text box: "12", "12.5", "21.01.97", "01:49:07",
    // "True"/"False"; the empty value and a failed check give an empty text.
    QString toText() const;

    friend bool operator==(const FieldValue&, const FieldValue&) = default;

  private:
    using Storage = std::variant<std::monostate, qint16, Currency, QDate, QString, bool>;
    explicit FieldValue(Storage value) : value_(std::move(value)) {}
    template <typename T>
    static FieldValue of(T value) {
        return FieldValue(Storage(std::in_place_type<T>, std::move(value)));
    }
    Storage value_;
};

// Checks a typed value against the kind of its field: a whole number of 16 bits, a currency
// amount, a date, a time or yes/no. Text is not checked and gives the empty value. A failed check
// gives the empty text and, unless quiet, shows the kind's message. Never throws.
FieldValue checkValue(const QVariant& value, ValueKind kind, bool quiet,
                      platform::Dialogs& dialogs);
// The quiet check: the same result, never a message.
FieldValue checkValue(const QVariant& value, ValueKind kind);

// What a text is escaped for: a quoted SQL literal (quotes only), a text embedded in a LIKE
// pattern (quotes and every wildcard), or a LIKE pattern the user typed (quotes and "[" only,
// its wildcards keep working).
enum class EscapeFor { Literal, TextInPattern, TypedPattern };
QString escapeSql(EscapeFor use, const QString& text);

// The condition on a text column for a comparison caption and the typed text: "Starts" and
// "Contains" embed the text in a pattern with its wildcards escaped ("LIKE 'Beat**'",
// "LIKE '*O''Neil*'"); any other caption ("Like", "Not Like") takes the typed pattern with its
// wildcards working ("Like 'Bea?les'").
QString textCondition(const QString& comparison, const QString& text);

// Turns the key codes of a to z into those of A to Z, so that the first letter typed into an
// empty list box matches the capitalised entries.
void upcaseKey(qint16& keyCode);

}  // namespace query
