// An edit control for a whole number.
#pragma once

#include "frame/edit.h"
#include "frame/number_range.h"

namespace quillgate {

class NumberField : public Edit {
 public:
  using Edit::Edit;

  static constexpr int kMaximumLength = 31;  // in characters, the length that settings store

  std::uint32_t Number() const { return ParseNumber(Text().substr(0, kMaximumLength)); }
  void SetNumber(std::uint32_t number) const { SetText(std::to_wstring(number)); }
};

}  // namespace quillgate
