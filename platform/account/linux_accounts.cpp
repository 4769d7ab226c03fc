#include "platform/account/linux_accounts.h"

#include <pwd.h>

#include <cerrno>
#include <charconv>
#include <fstream>
#include <mutex>
#include <set>
#include <sstream>
#include <string>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

// The full name is the first field of GECOS; "&" in it stands for the account's name.
std::string FullName(const passwd& entry) {
  const std::string_view gecos = entry.pw_gecos == nullptr ? "" : entry.pw_gecos;
  std::string name;
  for (const char c : gecos.substr(0, gecos.find(','))) {
    if (c == '&') {
      name += entry.pw_name;
    } else {
      name += c;
    }
  }
  return name;
}

void ReadNumber(const std::string& text, unsigned& number) {
  unsigned value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc() && end == text.data() + text.size()) number = value;
}

}  // namespace

UserIdRange ReadUserIdRange(std::istream& configuration) {
  UserIdRange range;
  for (std::string line; std::getline(configuration, line);) {
    std::istringstream words(line);
    std::string keyword;
    std::string value;
    if (!(words >> keyword >> value)) continue;
    if (keyword == "UID_MIN") ReadNumber(value, range.first);
    if (keyword == "UID_MAX") ReadNumber(value, range.last);
  }
  return range;
}

std::wstring AccountName(std::string_view name) {
  name.remove_prefix(name.rfind('\\') + 1);
  return Wide(name.substr(0, name.find('@')));
}

std::wstring NameOfAccount(unsigned number) {
  std::vector<char> buffer(1'024);
  passwd entry{};
  passwd* found = nullptr;
  while (::getpwuid_r(number, &entry, buffer.data(), buffer.size(), &found) == ERANGE)
    buffer.resize(2 * buffer.size());
  return found != nullptr ? AccountName(entry.pw_name) : std::wstring();
}

std::optional<std::vector<LocalAccount>> HumanAccounts() {
  std::ifstream configuration("/etc/login.defs");
  const UserIdRange range = ReadUserIdRange(configuration);
  // setpwent and getpwent share one position in the process.
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  std::vector<LocalAccount> accounts;
  std::set<std::wstring> names;
  bool isReadable = false;
  ::setpwent();
  errno = 0;
  while (const passwd* const entry = ::getpwent()) {
    isReadable = true;
    const bool human = entry->pw_uid >= range.first && entry->pw_uid <= range.last;
    const std::wstring name = AccountName(entry->pw_name);
    if (human && names.insert(name).second) {
      accounts.push_back({name, Wide(FullName(*entry)), entry->pw_uid});
    }
    errno = 0;
  }
  const int error = errno;
  ::endpwent();
  if (error == 0 || error == ENOENT) return accounts;
  LogLine("the name service cannot list all accounts");
  if (isReadable) return accounts;
  return std::nullopt;
}

}  // namespace platform
