#include "processor/SharedTables.h"

#include <memory>

namespace cinder {

namespace {

std::unique_ptr<const SharedTables> tables;

}  // namespace

const SharedTables& SharedTables::get() {
    return *tables;
}

void SharedTables::create() {
    tables = std::make_unique<const SharedTables>();
}

void SharedTables::destroy() {
    tables.reset();
}

}  // namespace cinder
