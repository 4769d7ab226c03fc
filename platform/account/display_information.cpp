// NetQueryDisplayInformation at level 1 and NetApiBufferFree. A buffer is one block of memory: the
// entries, then their texts.
#include <lm.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <span>

#include "platform/account/account_source.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr DWORD kMostEntries = 100;       // of one call, however many are requested
constexpr DWORD kNormalAccount = 0x0200;  // UF_NORMAL_ACCOUNT

std::size_t BytesOf(const LocalAccount& account) {
  const std::size_t characters = account.name.size() + account.fullName.size() + 3;
  return sizeof(NET_DISPLAY_USER) + characters * sizeof(wchar_t);
}

// How many accounts fit in that many bytes, but at least one.
std::size_t Fitting(std::span<const LocalAccount> accounts, std::size_t bytes) {
  std::size_t used = 0;
  std::size_t count = 0;
  while (count < accounts.size()) {
    used += BytesOf(accounts[count]);
    if (count > 0 && used > bytes) break;
    ++count;
  }
  return count;
}

LPWSTR PutText(LPWSTR& end, std::wstring_view text) {
  LPWSTR const begin = end;
  end = std::ranges::copy(text, begin).out;
  *end++ = L'\0';
  return begin;
}

// Null for lack of memory. `firstIndex` is the index of the first of these accounts in the whole
// list.
void* MakeBuffer(std::span<const LocalAccount> accounts, DWORD firstIndex) {
  std::size_t bytes = 0;
  for (const LocalAccount& account : accounts)
    bytes += BytesOf(account);
  void* const buffer = std::malloc(bytes);
  if (buffer == nullptr) return nullptr;
  auto* const entries = static_cast<NET_DISPLAY_USER*>(buffer);
  auto texts = reinterpret_cast<LPWSTR>(entries + accounts.size());
  for (std::size_t i = 0; i < accounts.size(); ++i) {
    auto* const entry = new (entries + i) NET_DISPLAY_USER{};
    entry->usri1_name = PutText(texts, accounts[i].name);
    entry->usri1_comment = PutText(texts, L"");
    entry->usri1_flags = kNormalAccount;
    entry->usri1_full_name = PutText(texts, accounts[i].fullName);
    entry->usri1_user_id = accounts[i].id;
    entry->usri1_next_index = firstIndex + static_cast<DWORD>(i) + 1;
  }
  return buffer;
}

DWORD CheckQuery(LPCWSTR server, DWORD level) {
  if (server != nullptr && *server != L'\0') {
    LogLine("the accounts of another machine were asked for");
    return ERROR_BAD_NETPATH;
  }
  if (level != 1) {
    LogLine("accounts are only listed at level 1");
    return ERROR_INVALID_LEVEL;
  }
  return ERROR_SUCCESS;
}

NET_API_STATUS Query(DWORD index, DWORD entriesRequested, DWORD preferredMaximumBytes,
                     DWORD& entryCount, PVOID& buffer) {
  const auto accounts = ListAccounts();
  if (!accounts) return ERROR_ACCESS_DENIED;
  const std::span<const LocalAccount> rest =
      std::span(*accounts).subspan(std::min<std::size_t>(index, accounts->size()));
  const std::size_t wanted =
      std::min<std::size_t>(std::min(entriesRequested, kMostEntries), rest.size());
  const std::size_t count = Fitting(rest.first(wanted), preferredMaximumBytes);
  if (count > 0) {
    buffer = MakeBuffer(rest.first(count), index);
    if (buffer == nullptr) return ERROR_NOT_ENOUGH_MEMORY;
  }
  entryCount = static_cast<DWORD>(count);
  return count < rest.size() ? ERROR_MORE_DATA : ERROR_SUCCESS;
}

}  // namespace
}  // namespace platform

NET_API_STATUS WINAPI NetQueryDisplayInformation(LPCWSTR server, DWORD level, DWORD index,
                                                 DWORD entriesRequested,
                                                 DWORD preferredMaximumBytes, LPDWORD entryCount,
                                                 PVOID* buffer) try {
  if (entryCount == nullptr || buffer == nullptr) return ERROR_INVALID_PARAMETER;
  *entryCount = 0;
  *buffer = nullptr;
  const DWORD error = platform::CheckQuery(server, level);
  if (error != ERROR_SUCCESS) return error;
  return platform::Query(index, entriesRequested, preferredMaximumBytes, *entryCount, *buffer);
} catch (...) {
  return platform::ErrorOfException();
}

NET_API_STATUS WINAPI NetApiBufferFree(LPVOID buffer) {
  std::free(buffer);
  return NERR_Success;
}
