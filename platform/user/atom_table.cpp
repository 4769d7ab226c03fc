#include "platform/user/atom_table.h"

#include "platform/kernel/encoding.h"

namespace platform {
namespace {

constexpr unsigned kFirstAtom = 0xC000;
constexpr unsigned kLastAtom = 0xFFFF;

}  // namespace

ATOM AtomTable::Add(std::wstring_view name) {
  const std::lock_guard lock(mutex_);
  const std::size_t next = kFirstAtom + atoms_.size();
  const std::wstring folded = LowerName(name);
  const auto found = atoms_.find(folded);
  if (found != atoms_.end()) return found->second;
  if (next > kLastAtom) return 0;
  return atoms_[folded] = static_cast<ATOM>(next);
}

ATOM AtomTable::Find(std::wstring_view name) const {
  const std::lock_guard lock(mutex_);
  const auto found = atoms_.find(LowerName(name));
  return found != atoms_.end() ? found->second : ATOM{0};
}

AtomTable& Atoms() {
  // Never destroyed, as threads may outlive static objects.
  static AtomTable& table = *new AtomTable;
  return table;
}

}  // namespace platform
