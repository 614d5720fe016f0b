// The table of master pointers.
#include "host/K/handles/master_table.h"

#include <algorithm>

namespace k {

Master* MasterTable::Add() {
  if (count_ == blocks_.size() * kPerBlock) AddBlock();
  Master* master = &(*blocks_.back())[count_ % kPerBlock];
  ++count_;
  return master;
}

// Allocates everything first: an exception must leave the table unchanged.
void MasterTable::AddBlock() {
  auto block = std::make_unique<Block>();
  const auto address = reinterpret_cast<std::uintptr_t>(block.get());
  Index index = indexes_.empty() ? Index{} : *indexes_.back();
  index.insert(std::lower_bound(index.begin(), index.end(), address), address);
  auto kept = std::make_unique<const Index>(std::move(index));
  blocks_.reserve(blocks_.size() + 1);
  indexes_.reserve(indexes_.size() + 1);

  blocks_.push_back(std::move(block));
  index_.store(kept.get(), std::memory_order_release);
  indexes_.push_back(std::move(kept));
}

Master* MasterTable::At(Handle handle) const {
  const Index* index = index_.load(std::memory_order_acquire);
  const auto address = reinterpret_cast<std::uintptr_t>(handle);
  if (index == nullptr || address % sizeof(Master) != 0) return nullptr;
  const std::uintptr_t block = address - address % sizeof(Block);
  // Most programs have a single block.
  const bool known =
      index->front() == block || std::binary_search(index->begin(), index->end(), block);
  return known ? reinterpret_cast<Master*>(handle) : nullptr;
}

}  // namespace k
