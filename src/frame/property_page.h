// Base of the pages of property sheets: a dialog object whose dialog the sheet creates.
#pragma once

#include <windows.h>

#include <prsht.h>

#include "frame/dialog_object.h"

namespace quillgate {

class PropertySheet;

class PropertyPage : public DialogObject {
 public:
  // Creates the page for a sheet that is about to be shown; the dialog of the page is created
  // together with the sheet, unless Complete clears PSP_PREMATURE. The sheet owns the handle, which
  // is null when the page could not be created.
  HPROPSHEETPAGE CreateHandle();

 protected:
  PropertyPage(const UiSurroundings& ui, UINT templateNumber, MessageId title,
               std::wstring helpTopic);

  // The page is shown: first, or instead of another one.
  virtual void OnActivated() {}

  // Shows this page instead of the current one: it refuses to be applied.
  void Activate() const;

  // Enables the sheet's Apply button: the page holds something that has not been applied.
  void MarkChanged() const;

  // Returns whether the sheet may be closed without applying. After true, CancelAll calls OnCancel.
  virtual bool OnQueryCancel();

  // Handles the notifications of the sheet and passes the others to OnNotify.
  bool AnswerNotification(const NMHDR& header) override;

 private:
  friend class PropertySheet;

  // Called before the page is created, when all common members of the structure are set: a derived
  // class adds its own.
  virtual void Complete(PROPSHEETPAGEW& page);
  void RefreshTexts() final;
  static INT_PTR CALLBACK StaticPageProc(HWND window, UINT message, WPARAM wParam,
                                         LPARAM lParam) noexcept;
  // Calls OnApply. False also when it throws.
  bool Accepts(HWND window) noexcept;

  UINT templateNumber_;
  MessageId title_;
  std::wstring titleText_;
  // Null unless the sheet is shown.
  PropertySheet* sheet_ = nullptr;
};

}  // namespace quillgate
