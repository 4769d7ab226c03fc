// A property sheet while it is open: a dialog with tabs that shows one page at a time, with buttons
// that apply or discard the changes on all pages; or a wizard, whose buttons turn the pages. Lives
// on the window thread, as long as the call that shows the sheet. A page may close the sheet in any
// message that it gets.
#pragma once

#include <prsht.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/dialog/dialog_template.h"
#include "platform/dialog/property_page.h"
#include "platform/dialog/sheet_layout.h"
#include "platform/dialog/wizard_frame.h"

namespace platform {

class PropertySheet {
 public:
  PropertySheet(const PROPSHEETHEADERW& header, std::vector<std::shared_ptr<PropertyPage>> pages);
  PropertySheet(const PropertySheet&) = delete;
  PropertySheet& operator=(const PropertySheet&) = delete;

  // Shows the sheet until it is closed. Returns a positive value when changes were saved, 0 when
  // not, -1 with the last error set when a page or the sheet cannot be created.
  INT_PTR Run();

 private:
  struct Page {
    std::shared_ptr<PropertyPage> page;
    DialogTemplate made;
    HWND window = nullptr;
    bool isChanged = false;
  };

  static INT_PTR CALLBACK Procedure(HWND sheet, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR Answer(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> AnswerSheetMessage(UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR OnNotify(const NMHDR& header);
  void OnButton(int id);

  bool ReadTemplates();
  DialogTemplate OwnTemplate() const;
  void Build(HWND sheet);
  void AddTabs();
  void LayOut();
  void PositionButtons();
  // The largest size of the outer pages of a wizard, or of all other pages.
  SIZE LargestPage(bool isOuter) const;
  void PositionSheet(SIZE size);

  // Creates the page's dialog; false when that fails.
  bool MakePage(Page& page);
  // Shows that page, or the one that it redirects to. False when the current page refuses to be
  // left, no page accepts to be shown, or there is no such page.
  bool TurnTo(std::size_t index);
  bool LetGo();
  std::optional<std::size_t> Enter(std::size_t index, int step = 1);
  std::size_t IndexOfTemplate(LRESULT number) const;
  void Show(std::size_t index);
  void Step(int step);
  std::optional<std::size_t> IndexOf(HWND page) const;
  Page* Current();

  bool IsWizard() const { return wizard_ != nullptr; }
  bool IsOuter(const Page& page) const { return IsWizard() && page.page->HidesHeader(); }
  void LayOutAsWizard();
  HeaderText HeaderOf(const Page& page) const;
  void PaintWizardSheet(HDC context);
  void ShowInWizard(const Page& page);
  void SetWizardButtons(LPARAM buttons);
  int ForwardButton() const;
  void FocusInWizard(HWND control);
  // Turns the page as the Next (+1) and Back (-1) buttons do.
  void Advance(int step);
  void Finish();
  bool PressInWizard(int button);

  bool PressInSheet(int button);
  bool Apply(bool closing);
  void Cancel(bool byCloseBox);
  void Press(int button);
  void SetChanged(HWND page, bool changed);
  LRESULT Notify(HWND page, UINT code, LPARAM parameter = 0) const;
  HWND Item(int id) const { return ::GetDlgItem(sheet_, id); }
  bool IsOpen() const { return ::IsWindow(sheet_) != FALSE; }

  const std::wstring caption_;
  const HWND owner_;
  const HINSTANCE instance_;
  const bool hasApply_;
  const std::size_t firstPage_;
  // Null for a sheet with tabs.
  const std::unique_ptr<WizardFrame> wizard_;
  std::vector<Page> pages_;
  SheetLayout layout_;
  HWND sheet_ = nullptr;
  std::optional<std::size_t> current_;
  bool isSaved_ = false;
};

}  // namespace platform
