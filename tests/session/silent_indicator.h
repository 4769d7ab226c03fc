// An indicator for those who do not look at it.
#pragma once

#include "session/gate_indicator.h"

namespace quillgate {

class SilentIndicator final : public GateIndicator {
 public:
  void SetIcon(GateIcon) override {}
  void SetTip(const std::wstring&) override {}
  void Show() override {}
  void ShowMessage(const std::wstring&, const std::wstring&, BalloonIcon, int) override {}
  bool Lock() override { return false; }
  void Unlock() override {}
};

}  // namespace quillgate
