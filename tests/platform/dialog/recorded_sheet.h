// A property sheet titled "Sheet" whose pages write down what they are told. One at a time, on the
// thread that shows it.
#pragma once

#include <windows.h>

#include <prsht.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/dialog/template_bytes.h"

class RecordedSheet {
 public:
  explicit RecordedSheet(DWORD flags = PSH_DEFAULT);
  ~RecordedSheet();
  RecordedSheet(const RecordedSheet&) = delete;
  RecordedSheet& operator=(const RecordedSheet&) = delete;

  // A page with one field and one check box; with nothing if it has no height.
  void AddPage(const std::string& name, DWORD flags = PSP_DEFAULT,
               TemplatePlace place = {0, 0, 120, 80});
  // What pages answer to a notification: all of them, or one.
  void Answer(UINT code, LRESULT answer, const std::string& page = {});
  void OnInit(std::function<void(HWND page)> work) { onInit_ = std::move(work); }
  void OnTimer(std::function<void(HWND page)> work) { onTimer_ = std::move(work); }
  LRESULT TemplateOf(std::size_t page) const {
    return reinterpret_cast<LRESULT>(pages_[page].templateName);
  }
  // What the page sets as it is activated.
  void SetWizardButtons(const std::string& page, LPARAM buttons) { buttons_[page] = buttons; }
  // In that number's bitmap.
  void ShowPictures(WORD number) { picture_ = number; }
  // Posts that button's command to the sheet as soon as a page is made.
  void CloseWhenShown(int button);

  INT_PTR Run();
  std::vector<HPROPSHEETPAGE> MakePages();
  INT_PTR RunWith(std::vector<HPROPSHEETPAGE> pages);

  // "NAME: init", "NAME: set active", "NAME: apply, closing", ...
  const std::vector<std::string>& Told() const { return told_; }
  // The page that was last activated.
  const std::string& Shown() const { return shown_; }
  HWND PageWindow(const std::string& name) const { return windows_.at(name); }
  // Whether every page got a record of its own with its parameter.
  bool GaveTheRecord() const { return gaveRecord_; }

 private:
  struct Page {
    std::string name;
    LPCWSTR templateName;
    DWORD flags;
  };
  static INT_PTR CALLBACK Procedure(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
  void Start(HWND window, const PROPSHEETPAGEW& record);
  LRESULT Hear(const std::string& page, const PSHNOTIFY& notification);
  const std::string& NameOf(HWND window) const;

  const DWORD flags_;
  std::vector<Page> pages_;
  std::map<std::pair<std::string, UINT>, LRESULT> answers_;
  std::function<void(HWND)> onInit_;
  std::function<void(HWND)> onTimer_;
  std::map<std::string, HWND> windows_;
  std::map<std::string, LPARAM> buttons_;
  std::vector<std::string> told_;
  std::string shown_;
  bool gaveRecord_ = false;
  WORD picture_ = 0;
};
