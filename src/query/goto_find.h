#pragma once

#include <QString>
#include <optional>

#include "query/columns.h"

namespace engine {
class Recordset;
}
namespace platform {
class Dialogs;
}

namespace query {

// The find buttons by their index.
enum class FindMode { First = 1, Previous = 2, Next = 3, Last = 4 };

// The criterion for "gotoField comparison value", the value checked by the field's kind in the
// column catalogue: "ArtistSort LIKE 'Beat**'",
// "Length <205 And Length > 0", "RecDate =#1/21/97#", "TitleAlbum Is Null". A checked value is
// written back into gotoText in normal form (an empty text when the check failed). Nothing,
// after the check's message or "Value must be a string.", when the value does not do.
std::optional<QString> gotoCriterion(const QString& comparison, QString& gotoText,
                                     const QString& gotoField, platform::Dialogs& dialogs);

// Moves rows to the first, previous, next or last row (mode 1 to 4) that meets the criterion
// built from the comparison and the typed value, and returns that criterion. A miss leaves the
// position to the record set's find. Returns nothing and leaves the position when the value was
// refused, the mode is none of 1 to 4, or the engine could not run the criterion (an unknown
// comparison typed into the list, say); the engine's description is then shown.
std::optional<QString> findInGotoList(int mode, const QString& comparison, QString& gotoText,
                                      engine::Recordset& rows, const QString& gotoField,
                                      platform::Dialogs& dialogs);

}  // namespace query
