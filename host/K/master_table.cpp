#include "master_table.h"

#include <algorithm>

namespace k {

Master* MasterTable::Add() {
  if (count_ == blocks_.size() * kPerBlock) AddBlock();
  Master* master = &(*blocks_.back())[count_ % kPerBlock];
  ++count_;
  return master;
}

// Room for both entries comes first: what throws must leave nothing half done.
void MasterTable::AddBlock() {
  blocks_.reserve(blocks_.size() + 1);
  addresses_.reserve(addresses_.size() + 1);
  auto block = std::make_unique<Block>();
  const auto address = reinterpret_cast<std::uintptr_t>(block.get());
  addresses_.insert(std::lower_bound(addresses_.begin(), addresses_.end(), address), address);
  blocks_.push_back(std::move(block));
}

Master* MasterTable::At(Handle handle) const {
  const auto address = reinterpret_cast<std::uintptr_t>(handle);
  const std::uintptr_t block = address - address % sizeof(Block);
  const bool known = std::binary_search(addresses_.begin(), addresses_.end(), block);
  return known && address % sizeof(Master) == 0 ? reinterpret_cast<Master*>(handle) : nullptr;
}

}  // namespace k
