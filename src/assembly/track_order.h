#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

#include "medium/medium_fit.h"

namespace engine {
class Database;
}  // namespace engine

// The running order of a compilation: renumbering its tracks by a sort order, and moving one
// track to another place by drag and drop. Each is one transaction: it either leaves the tracks
// numbered 1 to n in the new order or, when it fails, with their old numbers. The count and the
// total time do not change.
namespace assembly {

// Numbers the compilation's tracks 1 to n in the order of orderText (an ORDER BY list of
// CompilationTrack fields, without "ORDER BY"); tracks equal in that order keep their running
// order. Returns the number of tracks. Throws JetError (nothing changed) for an order the engine
// refuses or a write that fails.
int renumberBySort(engine::Database& database, qint64 compilationId, const QString& orderText);

// Numbers a cassette's tracks so that its sides are as even as they can be, each side keeping
// its tracks' running order (medium::balanceCassette), as one step. Nothing changes, and nothing
// is returned, when no choice of tracks fits both sides of lengthMinutes. Throws JetError (nothing
// changed) when a write fails.
std::optional<medium::BalancedSides> renumberBalanced(engine::Database& database,
                                                      qint64 compilationId, int lengthMinutes);

// Gives track `from` the number `to`; the tracks between move up or down by one to close the
// gap. from == to changes nothing. Tracks not numbered 1 to n (files of earlier versions) are
// numbered so first, in their running order; `from` and `to` name tracks by the numbers they
// had. Throws JetError 3021 (nothing changed) when either number is not a track of the
// compilation, and JetError when a write fails.
void moveTrack(engine::Database& database, qint64 compilationId, int from, int to);

// What the rearrange grid shows when a track is dropped on it.
struct DropGrid {
    int currentVisibleRow = 0;  // 0-based row under the drop, among the rows shown
    int visibleRows = 0;        // rows the grid shows at once
    int topTrackNo = 1;         // TrackNo of the top row shown
    int trackCount = 0;         // tracks on the compilation
};

// The number a track dropped on the grid's current row takes. A list longer than the grid
// scrolls, so the row counts from the top row's number; a row below the last track targets the
// last track.
int dropTargetNo(const DropGrid& grid);

}  // namespace assembly
