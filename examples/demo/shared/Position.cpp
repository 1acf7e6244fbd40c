#include "shared/Position.h"

#include "ZOL/Framework/Management/MemoryManager.h"

namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace Demo {

namespace {

int made = 0; // each side has its own

void* makePosition() {
    static Position position;
    ++made;
    return &position;
}

} // namespace

Position& position() {
    return *static_cast<Position*>(MemoryManager::registerObject(positionName, makePosition));
}

int positionsMade() {
    return made;
}

} // namespace Demo
