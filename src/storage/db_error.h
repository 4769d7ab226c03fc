// The only exception type of the storage layer. Thrown by value, caught by reference, copyable.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace quillgate {

class DBerror : public std::exception {
 public:
  // The code of a failure that this layer detects itself; all others are the engine's result codes.
  static constexpr std::int32_t kOwnFailure = -1;

  DBerror(std::wstring message, std::int32_t code) : message_(std::move(message)), code_(code) {}

  // The text to show to the user, unchanged. what() returns no useful text.
  const std::wstring& Message() const { return message_; }
  std::int32_t Code() const { return code_; }
  const char* what() const noexcept override { return "DBerror"; }

 private:
  std::wstring message_;
  std::int32_t code_;
};

// The error of a statement that the engine did not run because the file stayed in use.
inline DBerror BusyError() {
  constexpr std::int32_t kBusy = 5;
  return {L"The database is busy.", kBusy};
}

}  // namespace quillgate
