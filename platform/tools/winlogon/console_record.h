// What the packages were told last, kept in the registry: so that a logon process that was killed
// goes on where it stopped. Main thread.
#pragma once

#include <optional>
#include <string>

namespace platform::winlogon {

struct ConsoleUser {
  std::wstring sessionId;  // empty: nobody is at the console
  std::wstring name;
  bool isTold = true;  // false: the packages are being told of the logon or the logoff

  bool operator==(const ConsoleUser&) const = default;
};

class ConsoleRecord {
 public:
  // `bootId` names the machine's run: sessions of an earlier one have ended without a logoff.
  explicit ConsoleRecord(std::wstring bootId) : bootId_(std::move(bootId)) {}

  // Nothing when nothing was stored in this run of the machine.
  std::optional<ConsoleUser> Read() const;
  // A record that cannot be written is logged.
  void Write(const ConsoleUser& user) const;

 private:
  const std::wstring bootId_;
};

// The identifier of this run of the machine.
std::wstring BootId();

}  // namespace platform::winlogon
