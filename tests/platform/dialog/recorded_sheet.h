// A property sheet titled "Sheet", or a wizard, whose pages write down what they are told. One at a
// time, on the thread that shows it.
#pragma once

#include <windows.h>

#include <prsht.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/dialog/template_bytes.h"
#include "platform/kit/hidden_window.h"

class RecordedSheet {
 public:
  explicit RecordedSheet(DWORD flags = PSH_DEFAULT) : flags_(flags) { current_ = this; }
  ~RecordedSheet() { current_ = nullptr; }
  RecordedSheet(const RecordedSheet&) = delete;
  RecordedSheet& operator=(const RecordedSheet&) = delete;

  // A page with one field and one check box; with nothing if it has no height.
  void AddPage(const std::string& name, DWORD flags = PSP_DEFAULT,
               TemplateBounds place = {0, 0, 120, 80});
  // What pages answer to a notification: all of them, or one.
  void Answer(UINT code, LRESULT answer, const std::string& page = {});
  void OnInit(std::function<void(HWND page)> work) { onInit_ = std::move(work); }
  LRESULT TemplateOf(std::size_t page) const {
    return reinterpret_cast<LRESULT>(pages_[page].templateName);
  }
  // In that number's bitmap.
  void ShowPictures(WORD number) { picture_ = number; }

  // Shows the sheet until it ends. Takes the steps once it is shown, each in a message of its own,
  // and presses Cancel if it is open then; without steps it is left to the user.
  using Step = std::function<void(HWND sheet)>;
  INT_PTR Run(std::vector<Step> steps = {});

  // "NAME: init", "NAME: set active", "NAME: apply", ...; with ", closing" when the notification's
  // parameter is not zero.
  const std::vector<std::string>& Notified() const { return notified_; }
  // The page that was last activated.
  const std::string& Shown() const { return shown_; }
  HWND PageWindow(const std::string& name) const { return windows_.at(name); }
  // What the sheet was given.
  const std::vector<HPROPSHEETPAGE>& Handles() const { return handles_; }

 private:
  struct Page {
    std::string name;
    LPCWSTR templateName;
    DWORD flags;
  };
  static INT_PTR CALLBACK Procedure(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
  void MakePages();
  void Start(HWND window, const PROPSHEETPAGEW& record);
  void TakeStep(HWND page);
  LRESULT Receive(std::size_t page, const PSHNOTIFY& notification);

  static inline RecordedSheet* current_ = nullptr;
  HiddenWindow keepsDesktop_;
  const DWORD flags_;
  std::vector<Page> pages_;
  std::vector<HPROPSHEETPAGE> handles_;
  std::map<std::pair<std::string, UINT>, LRESULT> answers_;
  std::function<void(HWND)> onInit_;
  std::vector<Step> steps_;
  std::size_t taken_ = 0;
  std::map<std::string, HWND> windows_;
  std::vector<std::string> notified_;
  std::string shown_;
  WORD picture_ = 0;
};

// Steps: a button by its number (PSBTN_OK, ...), and the page of that index.
inline RecordedSheet::Step Press(int button) {
  return [button](HWND sheet) {
    ::SendMessageW(sheet, PSM_PRESSBUTTON, static_cast<WPARAM>(button), 0);
  };
}
inline RecordedSheet::Step TurnTo(int index) {
  return [index](HWND sheet) { PropSheet_SetCurSel(sheet, nullptr, index); };
}
