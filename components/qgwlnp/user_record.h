// The name of the user who is logged on, in the table WlNpData of the service's database: one row
// with the key "UserName", or none. Each change is one transaction. Used on the stack of one event.
#pragma once

#include <chrono>
#include <string>

namespace quillgate::notifier {

class UserRecord {
 public:
  // `folder` is that of the database, with the separator at its end.
  explicit UserRecord(std::wstring folder) : folder_(std::move(folder)) {}

  // Each replaces what is stored, and tries again for so long while that fails. Empty when it was
  // done, else the latest failure.
  std::string Store(const std::wstring& name, std::chrono::milliseconds limit) const;
  std::string Remove(std::chrono::milliseconds limit) const;

 private:
  std::string Replace(const std::string& insertion, std::chrono::milliseconds limit) const;

  const std::wstring folder_;
};

}  // namespace quillgate::notifier
