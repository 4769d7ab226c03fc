// Base of the pages of property sheets: a dialog object whose dialog the sheet makes.
#pragma once

#include <windows.h>

#include <prsht.h>

#include "frame/dialog_object.h"

namespace quillgate {

class PropertySheet;

class PropertyPage : public DialogObject {
 public:
  // The page for a sheet that is about to be shown, with its dialog made as soon as the sheet is.
  // The sheet owns the handle; null when there is none.
  HPROPSHEETPAGE CreateHandle();

 protected:
  PropertyPage(const UiSurroundings& ui, UINT templateNumber, MessageId title,
               std::wstring helpTopic);

  // Whether the sheet may be closed without applying. Once it may, OnCancel follows.
  virtual bool OnQueryCancel();

  // Answers the sheet's notifications and leaves the others to OnNotify.
  bool AnswerNotification(const NMHDR& header) override;

 private:
  friend class PropertySheet;

  // The record of the page is whole but for what a kind of page adds to it.
  virtual void Complete(PROPSHEETPAGEW& page);
  void RefreshTexts() final;
  static INT_PTR CALLBACK StaticPageProc(HWND window, UINT message, WPARAM wParam,
                                         LPARAM lParam) noexcept;
  // A page whose OnApply throws does not accept.
  bool Accepts(HWND window) noexcept;

  UINT templateNumber_;
  MessageId title_;
  std::wstring titleText_;
  // While it is shown.
  PropertySheet* sheet_ = nullptr;
};

}  // namespace quillgate
