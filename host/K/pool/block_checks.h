// The patterns in and around the blocks of the pool, by which stray writes are
// found.
#ifndef K_BLOCK_CHECKS_H
#define K_BLOCK_CHECKS_H

#include "host/K/pool/recycled_block.h"

namespace k {

// The guards fill the pages on either side, and what the block has over the
// size that was asked for. Both do nothing for a block without guards.
void WriteGuards(const K_RecycledPtr& block);
// Reports a guard that was written over.
void CheckGuards(const K_RecycledPtr& block);

void FillFreed(K_RecycledPtr& block);
// Reports a write into a filled block, which then counts as filled no more.
// Does nothing for others.
void CheckFilled(K_RecycledPtr& block);

}  // namespace k

#endif
