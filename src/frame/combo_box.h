// A drop-down list from which one entry is chosen.
#pragma once

#include <optional>

#include "frame/control.h"

namespace quillgate {

class ComboBox : public Control {
 public:
  using Control::Control;

  void Clear() const { Send(CB_RESETCONTENT); }
  // Appends an entry and returns its index, negative when it could not be added.
  int Add(const std::wstring& text) const;
  // The same for an entry with a number as item data.
  int Add(const std::wstring& text, LPARAM data) const;
  void Remove(int index) const { Send(CB_DELETESTRING, static_cast<WPARAM>(index)); }
  int Count() const { return static_cast<int>(Send(CB_GETCOUNT)); }

  // A negative index selects no entry.
  void Select(int index) const { Send(CB_SETCURSEL, static_cast<WPARAM>(index)); }
  int Selection() const { return static_cast<int>(Send(CB_GETCURSEL)); }
  // Empty when nothing is selected.
  std::wstring SelectedText() const;
  // Nullopt when no entry is selected.
  std::optional<LPARAM> SelectedData() const;
};

}  // namespace quillgate
