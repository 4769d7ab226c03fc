// "SysTabControl32": a row of tabs above an area where the caller shows something for the selected
// tab. Owned by its window, on the window thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/controls/basic_control.h"

namespace platform {

class TabControl final : public BasicControl, private TabEvents {
 public:
  explicit TabControl(Window& window) : BasicControl(window) {}

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  struct Tab {
    std::wstring text;
    LPARAM data = 0;
  };

  void OnTabWanted(int index) override;

  TabPeer* Peer() const { return static_cast<TabPeer*>(Self().Peer()); }
  bool Has(WPARAM index) const { return index < tabs_.size(); }
  LRESULT Insert(WPARAM index, const TCITEMW* item);
  LRESULT SetItem(WPARAM index, const TCITEMW* item);
  LRESULT GetItem(WPARAM index, TCITEMW* item) const;
  void Clear();
  // Returns the tab that was selected before. Does not notify the parent, as documented.
  LRESULT Select(WPARAM index);
  void SetSelection(int index);
  // Sends TCN_SELCHANGING, which the parent may refuse; then selects the tab and sends
  // TCN_SELCHANGE.
  void ChangeTo(int index);
  void Adjust(bool toWindow, RECT& area) const;

  std::vector<Tab> tabs_;
  int selected_ = -1;
};

}  // namespace platform
