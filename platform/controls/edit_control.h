// "Edit": a single line of text. The window's text is the content of the control. Owned by its
// window, on the window thread.
#pragma once

#include <optional>
#include <string>

#include "platform/controls/basic_control.h"

namespace platform {

class EditControl final : public BasicControl, private EditEvents {
 public:
  explicit EditControl(Window& window) : BasicControl(window) {}

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void OnEdited(const std::wstring& text) override;

  EditPeer* Peer() const { return static_cast<EditPeer*>(Self().Peer()); }
  int Length() const { return static_cast<int>(Self().Text().size()); }
  LRESULT SetContent(const wchar_t* text);
  void Select(int start, int end);
  EditSelection Current() const;
  LRESULT Selection(DWORD* start, DWORD* end) const;
  void SetLimit(WPARAM characters);
  void SetReadOnly(bool readOnly);

  // The selection of a window without a desktop.
  EditSelection selection_;
  int limit_ = 30'000;  // as documented
};

}  // namespace platform
