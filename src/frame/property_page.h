// Base of the pages of property sheets: a dialog object whose dialog the sheet makes.
#pragma once

#include <windows.h>

#include <prsht.h>

#include "frame/dialog_object.h"

namespace quillgate {

class PropertyPage : public DialogObject {
 public:
  // The page for a sheet that is about to be shown, with its dialog made as soon as the sheet is.
  // The sheet owns the handle; null when there is none.
  HPROPSHEETPAGE CreateHandle();

 protected:
  PropertyPage(const UiSurroundings& ui, UINT templateNumber, std::wstring title,
               std::wstring helpTopic);

  // Answers the sheet's apply and query-cancel notifications. A page with messages of its own
  // passes on what it does not handle.
  INT_PTR DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  static INT_PTR CALLBACK StaticPageProc(HWND window, UINT message, WPARAM wParam,
                                         LPARAM lParam) noexcept;
  // A page whose OnApply throws does not accept.
  bool Accepts(HWND window) noexcept;

  UINT templateNumber_;
  std::wstring title_;
};

}  // namespace quillgate
