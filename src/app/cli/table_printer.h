#pragma once

#include <QTextStream>

#include "engine/recordset.h"

namespace cli {

// Prints a header line of field names and the rows, tab-separated; Null is an empty field,
// yes/no reads True or False and dates are ISO dates.
void printRows(engine::Recordset& rows, QTextStream& out);

}  // namespace cli
