#include "store/data_control.h"

#include "engine/jet_error.h"

namespace store {

void DataControl::refresh() {
    engine::Recordset fresh = database_.openRecordset(recordSource_, type_);
    recordset_.emplace(std::move(fresh));
    emit refreshed();
    emit currentChanged();
}

void DataControl::clear() {
    recordset_.reset();
    emit refreshed();
}

engine::Recordset& DataControl::recordset() {
    if (!hasRecordset()) {
        throw engine::JetError(engine::jet::kInvalidOperation,
                               QStringLiteral("Object invalid or no longer set."));
    }
    return *recordset_;
}

}  // namespace store
