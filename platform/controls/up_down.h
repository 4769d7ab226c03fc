// "msctls_updown32": two arrows that step a number, most often that of a field beside them. Owned
// by its window, on the window thread.
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
  // Beside the buddy, which gives up the place for it.
  void MoveBesideBuddy(Window& buddy);
  void SetRange(int low, int high);
  LRESULT GetRange(int* low, int* high) const;
  LRESULT SetPosition(int position);
  LRESULT GetPosition(BOOL* failed);
  int Bounded(long long position) const;
  void ShowInBuddy();
  // With UDS_SETBUDDYINT the buddy's text is the position, if it is a number.
  bool ReadBuddy();
  void Step(int delta);

  HWND buddy_ = nullptr;
  // As documented: the upper arrow decreases until a range is set.
  int low_ = 100;
  int high_ = 0;
  int position_ = 0;
};

}  // namespace platform
