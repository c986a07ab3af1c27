// Names on Windows are those of the whole session: runs take turns.
#include "platform/OwnBlocks.h"

#include "platform/OwnTurn.h"

void TakeOwnBlocks() {
    TakeOwnTurn();
}
