#include "engine/foreign_tables.h"

namespace engine {

namespace {
std::shared_ptr<ForeignTableReader>& installedReader() {
    static std::shared_ptr<ForeignTableReader> reader;
    return reader;
}
}  // namespace

void setForeignTableReader(std::shared_ptr<ForeignTableReader> reader) {
    installedReader() = std::move(reader);
}

ForeignTableReader* foreignTableReader() { return installedReader().get(); }

}  // namespace engine
