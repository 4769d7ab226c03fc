#include "platform/account/account_source.h"

#include "platform/account/linux_accounts.h"
#include "platform/kernel/seam.h"

namespace platform {
namespace {

Seam<AccountSource>& Replacement() {
  static auto& seam = *new Seam<AccountSource>;
  return seam;
}

}  // namespace

std::optional<std::vector<LocalAccount>> ListAccounts() {
  const AccountSource source = Replacement().Get();
  return source ? source() : HumanAccounts();
}

void SetAccountSource(AccountSource source) {
  Replacement().Set(std::move(source));
}

}  // namespace platform
