#pragma once

#include "engine/jet_sql_tokens.h"

namespace engine {

// Makes grouping and sorting case-blind the way Jet does: every GROUP BY and ORDER BY term gets
// the engine's text collation (before ASC/DESC), and a grouped SELECT without ORDER BY gets one
// over its group keys, since Jet returns groups in key order. Applies to every nesting level, in
// one pass with an explicit stack of levels, so time and memory grow linearly with the statement,
// whatever its depth. Throws JetError(kQueryTooComplex) when copies of group keys would multiply
// the statement's length (grouped subqueries nested inside group keys).
JetTokens arrangeGroupingAndOrder(const JetTokens& tokens);

}  // namespace engine
