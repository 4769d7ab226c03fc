#include "platform/account/account_source.h"

#include <mutex>

#include "platform/account/linux_accounts.h"

namespace platform {
namespace {

std::mutex mutex;
AccountSource replacement;

}  // namespace

std::optional<std::vector<LocalAccount>> ListAccounts() {
  AccountSource source;
  {
    const std::lock_guard lock(mutex);
    source = replacement;
  }
  return source ? source() : HumanAccounts();
}

void SetAccountSource(AccountSource source) {
  const std::lock_guard lock(mutex);
  replacement = std::move(source);
}

}  // namespace platform
