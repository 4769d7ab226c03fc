// "Static": a text, an icon, a bitmap or a line that tells the user something and takes no input.
// Owned by its window, on the window thread.
#pragma once

#include <optional>

#include "platform/controls/basic_control.h"

namespace platform {

class StaticControl final : public BasicControl, private StaticEvents {
 public:
  explicit StaticControl(Window& window) : BasicControl(window) {}

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void OnMnemonic() override { FocusNext(); }

  StaticPeer* Peer() const { return static_cast<StaticPeer*>(Self().Peer()); }
  DWORD Kind() const { return Self().Style() & SS_TYPEMASK; }
  bool IsSupported() const;
  bool ShowsImage() const { return Kind() == SS_ICON || Kind() == SS_BITMAP; }
  // The image that the window's name stands for, as documented for these types.
  void LoadNamedImage(const CREATESTRUCTW& creation);
  // The handle that was shown before; 0 when the control does not show that kind.
  LRESULT SetImage(int type, void* image);
  void ShowIcon(HICON icon);
  void ShowPicture(HBITMAP bitmap);
  // As documented, the control takes the size of what it shows.
  void TakeSize(int width, int height);

  void* image_ = nullptr;
  // A bitmap that was loaded here and that nobody has taken over by setting another.
  HBITMAP ownBitmap_ = nullptr;
};

}  // namespace platform
