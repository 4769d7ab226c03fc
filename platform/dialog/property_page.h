// What a property page's handle stands for: the record that the program gave, kept as long as the
// page, and where its dialog comes from. Made by any thread, used by the window thread.
#pragma once

#include <prsht.h>

#include <optional>
#include <string>

#include "platform/dialog/dialog_template.h"
#include "platform/kernel/handle_table.h"

namespace platform {

class PropertyPage final : public Object {
 public:
  // The record has been checked.
  explicit PropertyPage(const PROPSHEETPAGEW& given);

  // The page's own copy, which is what its WM_INITDIALOG gets.
  PROPSHEETPAGEW& Record() { return record_; }
  bool IsCreatedAtOnce() const { return (record_.dwFlags & PSP_PREMATURE) != 0; }

  // An outer page of a wizard, which has no header.
  bool HidesHeader() const { return (record_.dwFlags & PSP_HIDEHEADER) != 0; }

  // The page's dialog as a child without a frame; nothing when there is no such resource.
  std::optional<DialogTemplate> Template() const;
  // The title that the record gives; nothing: the template's.
  std::optional<std::wstring> Title() const;
  // What a wizard's header says above the page; may be empty.
  const std::wstring& HeaderTitle() const { return headerTitle_; }
  const std::wstring& HeaderSubTitle() const { return headerSubTitle_; }

 private:
  // Keeps a text of the record as long as the record, if the flag says that there is one.
  void Keep(std::wstring& text, LPCWSTR& given, DWORD flag);

  PROPSHEETPAGEW record_{};
  std::wstring title_;
  std::wstring headerTitle_;
  std::wstring headerSubTitle_;
};

}  // namespace platform
