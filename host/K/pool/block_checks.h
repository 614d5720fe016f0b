// Patterns in and around the blocks of the pool that reveal stray writes.
#ifndef K_BLOCK_CHECKS_H
#define K_BLOCK_CHECKS_H

#include "host/K/pool/recycled_block.h"

namespace k {

// Fills the guards: the pages on either side, and the bytes of the block beyond the
// requested size. Does nothing for a block without guards.
void WriteGuards(const K_RecycledPtr& block);
// Reports a guard that was overwritten. Does nothing for a block without guards.
void CheckGuards(const K_RecycledPtr& block);

// Fills a freed block with its pattern.
void FillFreed(K_RecycledPtr& block);
// Reports a write into a filled block and marks it as not filled. Does nothing for
// a block that is not filled.
void CheckFilled(K_RecycledPtr& block);

}  // namespace k

#endif
