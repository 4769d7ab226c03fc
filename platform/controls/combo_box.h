// "ComboBox" as a drop-down list: the items, each with a data value of the caller's, and the
// selection. The window's text is that of the selected item. Owned by its window, on the window
// thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/controls/basic_control.h"

namespace platform {

class ComboBox final : public BasicControl, private ComboBoxEvents {
 public:
  explicit ComboBox(Window& window) : BasicControl(window) {}

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  struct Item {
    std::wstring text;
    LPARAM data = 0;
  };

  void OnChosen(int index) override;

  ComboBoxPeer* Peer() const { return static_cast<ComboBoxPeer*>(Self().Peer()); }
  int Count() const { return static_cast<int>(items_.size()); }
  bool Has(WPARAM index) const { return index < items_.size(); }
  std::optional<LRESULT> AnswerItems(UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT Add(const wchar_t* text);
  LRESULT Insert(int index, const wchar_t* text);
  LRESULT Delete(WPARAM index);
  void Clear();
  LRESULT Select(int index);
  LRESULT SelectString(int after, const wchar_t* prefix);
  LRESULT CopyText(WPARAM index, wchar_t* buffer) const;
  // The first matching item after that one (below zero: from the first), wrapping around, without
  // regard to case; CB_ERR when there is none.
  enum class Match { kPrefix, kWhole };
  int Find(int after, const wchar_t* text, Match match) const;
  void SetSelection(int index);
  // Sets the height of the closed box, which the font determines. With listToo the height that the
  // window was created with becomes that of the list.
  void SettleHeight(bool listToo);

  std::vector<Item> items_;
  int selected_ = -1;
};

}  // namespace platform
