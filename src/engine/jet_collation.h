#pragma once

#include <string_view>

struct sqlite3;

namespace engine {

// Orders UTF-8 texts the way a user reads a sorted list: without regard to case, with regard to
// accents, accented letters next to their base letter ("abba" < "Arzte" < "Ärzte" < "Beatles").
// The order is ICU's root collation of the folded forms (jet_text_fold.h), ties broken by the
// code points of the folded forms, so two texts are equal exactly when their folded forms are and
// the order is total. Returns <0, 0 or >0. Every comparison of data values goes through here.
int compareJetText(std::string_view a, std::string_view b);

// Installs compareJetText on the connection as the collation kTextCollation (field_type.h).
// SQLite's own NOCASE stays as it is, so files declared with it keep its ASCII-only order.
// Throws JetError when ICU cannot open its collator.
void registerJetCollation(sqlite3* db);

// Installs compareJetText under the name NOCASE as well, as earlier versions did: their files
// are in order only under it. For reading such a file (its check) before it is converted.
void registerEarlierTextOrder(sqlite3* db);

}  // namespace engine
