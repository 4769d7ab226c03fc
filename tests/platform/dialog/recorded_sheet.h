// A property sheet titled "Sheet", or a wizard, whose pages write down what they are told. One at a
// time, on the thread that shows it.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>
#include <prsht.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/dialog/template_bytes.h"
#include "platform/kit/hidden_window.h"

inline constexpr int kApply = 0x3021;

// What a test does to a sheet that is shown. Made here: a button pressed, by its number (PSBTN_OK,
// ...), and the page of an index turned to.
using SheetStep = std::function<void(HWND sheet)>;
inline SheetStep Press(int button) {
  return [button](HWND sheet) {
    ::SendMessageW(sheet, PSM_PRESSBUTTON, static_cast<WPARAM>(button), 0);
  };
}
inline SheetStep TurnTo(int index) {
  return [index](HWND sheet) { PropSheet_SetCurSel(sheet, nullptr, index); };
}

inline RECT PlaceOf(HWND window) {
  RECT place{};
  ::GetWindowRect(window, &place);
  return place;
}

class RecordedSheet {
 public:
  explicit RecordedSheet(DWORD flags = PSH_DEFAULT) {
    header_.dwSize = PROPSHEETHEADERW_V1_SIZE;
    header_.dwFlags = flags;
    header_.pszCaption = L"Sheet";
    current_ = this;
  }
  ~RecordedSheet() { current_ = nullptr; }
  RecordedSheet(const RecordedSheet&) = delete;
  RecordedSheet& operator=(const RecordedSheet&) = delete;

  // A page with one field and one check box; with nothing if it has no height.
  void AddPage(const std::string& name, DWORD flags = PSP_DEFAULT,
               const TemplateBounds& place = {0, 0, 120, 80}) {
    TemplateBytes bytes(WS_POPUP | WS_CAPTION | DS_SETFONT, place, u"Page");
    if (place.height > 0) {
      bytes.Item(u"Edit", 1001, kStop, {5, 5, 80, 14}, u"text");
      bytes.Item(kButton, 1002, kStop | BS_AUTOCHECKBOX, {5, 25, 80, 12}, u"Check");
    }
    pages_.push_back({name, AddTemplate(bytes), flags});
  }
  // What pages answer to a notification: all of them, or one.
  void Answer(UINT code, LRESULT answer, const std::string& page = {}) {
    for (const Page& each : pages_) {
      if (page.empty() || page == each.name) answers_[{each.name, code}] = answer;
    }
  }
  void OnInit(std::function<void(HWND page)> work) { onInit_ = std::move(work); }
  LRESULT TemplateOf(std::size_t page) const {
    return reinterpret_cast<LRESULT>(pages_[page].templateName);
  }
  // In that number's bitmap.
  void ShowPictures(WORD number) {
    header_.dwSize = sizeof header_;
    header_.dwFlags |= PSH_WATERMARK | PSH_HEADER;
    header_.hInstance = ::GetModuleHandleW(nullptr);
    header_.pszbmWatermark = MAKEINTRESOURCEW(number);
    header_.pszbmHeader = MAKEINTRESOURCEW(number);
  }

  // Shows the sheet until it ends. Takes the steps once it is shown, each in a message of its own,
  // and presses Cancel if it is open then; without steps it is left to the user.
  INT_PTR Run(std::vector<SheetStep> steps = {}) {
    steps_ = std::move(steps);
    taken_ = 0;
    notified_.clear();
    shown_.clear();
    windows_.clear();
    handles_.clear();
    for (const Page& page : pages_) {
      PROPSHEETPAGEW record{};
      record.dwSize = PROPSHEETPAGEW_V2_SIZE;
      record.pszHeaderTitle = L"Header";
      record.pszHeaderSubTitle = L"Sub";
      record.dwFlags = page.flags | PSP_USETITLE;
      record.pszTemplate = page.templateName;
      record.pszTitle = L"Title";
      record.pfnDlgProc = Procedure;
      record.lParam = static_cast<LPARAM>(handles_.size());
      handles_.push_back(::CreatePropertySheetPageW(&record));
    }
    header_.nPages = static_cast<UINT>(handles_.size());
    header_.phpage = handles_.data();
    return ::PropertySheetW(&header_);
  }

  // "NAME: init", "NAME: set active", "NAME: apply", ...; with ", closing" when the notification's
  // parameter is not zero.
  const std::vector<std::string>& Notified() const { return notified_; }
  // The page that was last activated.
  const std::string& Shown() const { return shown_; }
  HWND PageWindow(const std::string& name) const { return windows_.at(name); }
  // What the sheet was given.
  const std::vector<HPROPSHEETPAGE>& Handles() const { return handles_; }

 private:
  static constexpr UINT kTakeStep = WM_APP;

  struct Page {
    std::string name;
    LPCWSTR templateName;
    DWORD flags;
  };

  static INT_PTR CALLBACK Procedure(HWND page, UINT message, WPARAM, LPARAM lParam) {
    switch (message) {
      case WM_INITDIALOG:
        current_->Start(page, *reinterpret_cast<const PROPSHEETPAGEW*>(lParam));
        return TRUE;
      case kTakeStep:
        current_->TakeStep(page);
        return TRUE;
      case WM_NOTIFY:
        current_->Receive(page, *reinterpret_cast<const PSHNOTIFY*>(lParam));
        return TRUE;
      default:
        return FALSE;
    }
  }

  void Start(HWND window, const PROPSHEETPAGEW& record) {
    ::SetWindowLongPtrW(window, GWLP_USERDATA, record.lParam);
    const Page& page = pages_[static_cast<std::size_t>(record.lParam)];
    if (windows_.empty() && !steps_.empty()) ::PostMessageW(window, kTakeStep, 0, 0);
    windows_[page.name] = window;
    notified_.push_back(page.name + ": init");
    EXPECT_TRUE(record.pfnDlgProc == Procedure && record.pszTemplate == page.templateName &&
                std::wstring_view(record.pszTitle) == L"Title")
        << page.name << " was not given its record";
    if (onInit_) onInit_(window);
  }

  // The next one follows what this one posts.
  void TakeStep(HWND page) {
    const bool isLast = taken_ == steps_.size();
    (isLast ? Press(PSBTN_CANCEL) : steps_[taken_++])(::GetParent(page));
    if (!isLast && ::IsWindow(page)) ::PostMessageW(page, kTakeStep, 0, 0);
  }

  void Receive(HWND window, const PSHNOTIFY& notification) {
    static const std::map<UINT, std::string> kNames = {
        {PSN_SETACTIVE, "set active"}, {PSN_KILLACTIVE, "kill active"},   {PSN_APPLY, "apply"},
        {PSN_RESET, "reset"},          {PSN_QUERYCANCEL, "query cancel"}, {PSN_WIZBACK, "back"},
        {PSN_WIZNEXT, "next"},         {PSN_WIZFINISH, "finish"},
    };
    const auto page = static_cast<std::size_t>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    const std::string& name = pages_[page].name;
    const UINT code = notification.hdr.code;
    notified_.push_back(name + ": " + kNames.at(code) +
                        (notification.lParam != 0 ? ", closing" : ""));
    if (code == PSN_SETACTIVE) {
      shown_ = name;
      const LPARAM back = page > 0 ? PSWIZB_BACK : 0;
      const LPARAM forward = page + 1 < pages_.size() ? PSWIZB_NEXT : PSWIZB_FINISH;
      if ((header_.dwFlags & PSH_WIZARD97) != 0)
        PropSheet_SetWizButtons(notification.hdr.hwndFrom, back | forward);
    }
    ::SetWindowLongPtrW(window, DWLP_MSGRESULT, answers_[{name, code}]);
  }

  static inline RecordedSheet* current_ = nullptr;
  HiddenWindow keepsDesktop_;
  PROPSHEETHEADERW header_{};
  std::vector<Page> pages_;
  std::vector<HPROPSHEETPAGE> handles_;
  std::map<std::pair<std::string, UINT>, LRESULT> answers_;
  std::function<void(HWND)> onInit_;
  std::vector<SheetStep> steps_;
  std::size_t taken_ = 0;
  std::map<std::string, HWND> windows_;
  std::vector<std::string> notified_;
  std::string shown_;
};
