// A field in which a whole number is entered.
#pragma once

#include "frame/edit.h"
#include "frame/number_range.h"

namespace quillgate {

class NumberField : public Edit {
 public:
  using Edit::Edit;

  static constexpr int kMaximumLength = 31;  // characters, as many as settings keep

  std::uint32_t Number() const { return ParseNumber(Text().substr(0, kMaximumLength)); }
  void SetNumber(std::uint32_t number) const { SetText(std::to_wstring(number)); }
};

}  // namespace quillgate
