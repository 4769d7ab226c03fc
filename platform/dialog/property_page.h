// The object behind a property page's handle: a copy of the record that the program passed, and the
// source of the page's dialog. Created by any thread, used by the window thread.
#pragma once

#include <prsht.h>

#include <optional>
#include <string>

#include "platform/dialog/dialog_template.h"
#include "platform/kernel/handle_table.h"

namespace platform {

class PropertyPage final : public Object {
 public:
  // The caller has checked the record.
  explicit PropertyPage(const PROPSHEETPAGEW& given);

  // The page's own copy, which is the parameter of its WM_INITDIALOG.
  PROPSHEETPAGEW& Record() { return record_; }
  bool IsCreatedAtOnce() const { return (record_.dwFlags & PSP_PREMATURE) != 0; }

  // True for an outer page of a wizard, which has no header.
  bool HidesHeader() const { return (record_.dwFlags & PSP_HIDEHEADER) != 0; }

  // The page's dialog as a child without a frame; nothing when there is no such resource.
  std::optional<DialogTemplate> Template() const;
  // The title in the record; nothing when the template's title applies.
  std::optional<std::wstring> Title() const;
  // The texts of a wizard's header above the page; may be empty.
  const std::wstring& HeaderTitle() const { return headerTitle_; }
  const std::wstring& HeaderSubTitle() const { return headerSubTitle_; }

 private:
  // If the record has the flag, copies the text that it points to and redirects the pointer to the
  // copy.
  void Keep(std::wstring& text, LPCWSTR& given, DWORD flag);

  PROPSHEETPAGEW record_{};
  std::wstring title_;
  std::wstring headerTitle_;
  std::wstring headerSubTitle_;
};

}  // namespace platform
