// "Static": a text, an icon, a bitmap or a line. Takes no input. Owned by its window, on the window
// thread.
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
  // Loads the image that the window's name refers to, as documented for these styles.
  void LoadNamedImage(const CREATESTRUCTW& creation);
  // Returns the handle that was shown before; 0 when the control does not show images of that type.
  LRESULT SetImage(int type, void* image);
  void ShowIcon(HICON icon);
  void ShowBitmap(HBITMAP bitmap);
  // Resizes the control to the size of its image, as documented.
  void TakeSize(int width, int height);

  void* image_ = nullptr;
  // A bitmap that the control has loaded and owns. Setting another image passes the ownership to
  // the caller.
  HBITMAP ownBitmap_ = nullptr;
};

}  // namespace platform
