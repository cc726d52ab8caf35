#include "shell/picker_source.h"

#include "engine/jet_error.h"
#include "query/filter_clause.h"

namespace shell {

void buildPickerSource(AppState& state) {
    if (state.album.albumDatabasePath != state.clausesAlbumPath) {
        state.filterClause.clear();
        state.sortClause.clear();
        state.clausesAlbumPath = state.album.albumDatabasePath;
    }
    store::buildTempSource(state.database, state.album);
    if (state.filterClause.isEmpty()) {
        return;
    }
    try {
        state.album.passedCount = query::countPassingTracks(state.database, state.filterClause);
    } catch (const engine::JetError&) {
        // A filter the new source cannot answer: the source is shown unfiltered.
        state.filterClause.clear();
    }
}

}  // namespace shell
