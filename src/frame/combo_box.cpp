#include "frame/combo_box.h"

namespace quillgate {

int ComboBox::Add(const std::wstring& text) const {
  return static_cast<int>(Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())));
}

int ComboBox::Add(const std::wstring& text, LPARAM data) const {
  const int index = Add(text);
  if (index >= 0) Send(CB_SETITEMDATA, static_cast<WPARAM>(index), data);
  return index;
}

std::optional<LPARAM> ComboBox::SelectedData() const {
  const int index = Selection();
  if (index < 0) return {};
  return Send(CB_GETITEMDATA, static_cast<WPARAM>(index));
}

std::wstring ComboBox::SelectedText() const {
  const auto index = static_cast<WPARAM>(Selection());
  const LRESULT length = Send(CB_GETLBTEXTLEN, index);
  if (length <= 0) return {};
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  const LRESULT copied = Send(CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
  text.resize(copied < 0 ? 0 : static_cast<std::size_t>(copied));
  return text;
}

}  // namespace quillgate
