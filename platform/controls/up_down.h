// "msctls_updown32": two arrows that step a number, usually that of an edit control beside them,
// the buddy. Owned by its window, on the window thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <string>

#include "platform/controls/basic_control.h"

namespace platform {

class UpDown final : public BasicControl, private UpDownEvents {
 public:
  explicit UpDown(Window& window) : BasicControl(window) {}

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void OnStep(bool up) override;

  UpDownPeer* Peer() const { return static_cast<UpDownPeer*>(Self().Peer()); }
  bool Has(DWORD style) const { return (Self().Style() & style) != 0; }
  LRESULT SetBuddy(HWND buddy);
  void TakeSiblingAsBuddy();
  // Positions the control beside the buddy, which becomes narrower.
  void MoveBesideBuddy(Window& buddy);
  void SetRange(int low, int high);
  LRESULT GetRange(int* low, int* high) const;
  LRESULT SetPosition(int position);
  LRESULT GetPosition(BOOL* failed);
  int Bounded(long long position) const;
  void ShowInBuddy();
  // Takes the position from the buddy's text. False when the text is not a number in range.
  bool ReadBuddy();
  void Step(int delta);

  HWND buddy_ = nullptr;
  // The documented initial range, with which the upper arrow decreases the position.
  int low_ = 100;
  int high_ = 0;
  int position_ = 0;
};

}  // namespace platform
