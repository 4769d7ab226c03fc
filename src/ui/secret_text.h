// The text of a password field. The destructor wipes the memory.
#pragma once

#include <windows.h>

#include <array>
#include <string_view>

#include "frame/edit.h"

namespace quillgate {

class SecretText {
 public:
  static constexpr int kMaximumLength = 511;

  explicit SecretText(const Edit& field)
      : length_(::GetWindowTextW(field.Window(), text_.data(), kMaximumLength + 1)) {}
  ~SecretText() { ::SecureZeroMemory(text_.data(), sizeof(text_)); }
  SecretText(const SecretText&) = delete;
  SecretText& operator=(const SecretText&) = delete;

  std::wstring_view View() const { return {text_.data(), static_cast<std::size_t>(length_)}; }

 private:
  std::array<wchar_t, kMaximumLength + 1> text_{};
  int length_;
};

}  // namespace quillgate
