// A property sheet while it is open: a dialog with tabs, one page shown at a time, and buttons that
// apply or drop what was changed on all of them; or a wizard, whose buttons turn the pages. Lives
// on the window thread, as long as the call that shows it. A page may end the sheet in any message
// that it gets.
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

  // Shows the sheet until it is closed. Positive when changes were saved, 0 when not, minus one
  // when a page or the sheet cannot be made; the last error tells why.
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
  // Of the pages that are outer ones of a wizard, or of those that are not.
  SIZE LargestPage(bool isOuter) const;
  void PositionSheet(SIZE size);

  // False when the page's dialog cannot be made.
  bool MakePage(Page& page);
  // Makes that page the one that is shown, or the one that it names in its place. False when the
  // present page does not let go, or there is no such page.
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
  // By the buttons that say so: minus one is back.
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
  // Null: there are tabs.
  const std::unique_ptr<WizardFrame> wizard_;
  std::vector<Page> pages_;
  SheetLayout layout_;
  HWND sheet_ = nullptr;
  std::optional<std::size_t> current_;
  bool isSaved_ = false;
};

}  // namespace platform
