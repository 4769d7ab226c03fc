// "Button": push buttons, check boxes, radio buttons and group boxes. Owned by its window, on the
// window thread.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/controls/basic_control.h"

namespace platform {

class ButtonControl final : public BasicControl, private ButtonEvents {
 public:
  explicit ButtonControl(Window& window) : BasicControl(window) {}

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void OnClicked() override;
  void OnMnemonic() override { FocusNext(); }

  ButtonPeer* Peer() const { return static_cast<ButtonPeer*>(Self().Peer()); }
  DWORD Kind() const { return Self().Style() & BS_TYPEMASK; }
  bool IsRadio() const;
  bool HasCheck() const;
  LRESULT DialogCode() const;
  void SetCheck(bool checked);
  void SetKind(DWORD kind);
  // Changes the check of an automatic button, as a click does.
  void Toggle();
  std::vector<ButtonControl*> RadiosOfGroup() const;

  bool checked_ = false;
};

}  // namespace platform
