// What was shown of the gate.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

#include "session/gate_indicator.h"

namespace quillgate {

struct RecordingIndicator final : GateIndicator {
  struct Balloon {
    std::wstring title;
    std::wstring text;
    BalloonIcon icon;
    bool operator==(const Balloon&) const = default;
  };

  void SetIcon(GateIcon icon) override { icons.push_back(icon); }
  void SetTip(const std::wstring& text) override { tip = text; }
  void Show() override { shown = true; }
  void ShowMessage(const std::wstring& text, const std::wstring& title, BalloonIcon icon,
                   int kind) override {
    balloons.push_back({title, text, icon});
    EXPECT_EQ(kind, 0);
  }
  bool Lock() override { return locked.exchange(true); }
  void Unlock() override { locked = false; }

  std::vector<GateIcon> icons;
  std::wstring tip;
  std::vector<Balloon> balloons;
  bool shown = false;
  std::atomic<bool> locked = false;
};

}  // namespace quillgate
