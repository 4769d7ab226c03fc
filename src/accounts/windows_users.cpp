#include "accounts/windows_users.h"

#include <windows.h>
#include <lm.h>

#include "handles/handle.h"

namespace quillgate {
namespace {

constexpr DWORD kUserAccounts = 1;  // the information level
constexpr DWORD kEntriesPerBatch = 100;

struct NetBufferTrait {
  using Type = void*;
  static Type Invalid() { return nullptr; }
  static void Close(Type buffer) { ::NetApiBufferFree(buffer); }
};
using NetBuffer = UniqueHandle<NetBufferTrait>;

// Appends the batch that starts at `index` and sets `index` to the start of the next one.
NET_API_STATUS AppendBatch(std::vector<std::wstring>& names, DWORD& index) {
  DWORD count = 0;
  void* memory = nullptr;
  const NET_API_STATUS status = ::NetQueryDisplayInformation(
      nullptr, kUserAccounts, index, kEntriesPerBatch, MAX_PREFERRED_LENGTH, &count, &memory);
  const NetBuffer buffer(memory);
  if (status != NERR_Success && status != ERROR_MORE_DATA) return status;
  const DWORD start = index;
  const auto* const entries = static_cast<const NET_DISPLAY_USER*>(buffer.Get());
  for (DWORD i = 0; i < count; ++i) {
    names.emplace_back(entries[i].usri1_name);
    index = entries[i].usri1_next_index;
  }
  // More entries, but no index to continue from.
  if (status == ERROR_MORE_DATA && index == start) return ERROR_NO_MORE_ITEMS;
  return status;
}

}  // namespace

bool GetWindowsUserList(std::vector<std::wstring>& names) {
  DWORD index = 0;
  NET_API_STATUS status = ERROR_MORE_DATA;
  while (status == ERROR_MORE_DATA)
    status = AppendBatch(names, index);
  return status == NERR_Success;
}

}  // namespace quillgate
