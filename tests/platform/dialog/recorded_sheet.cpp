#include "platform/dialog/recorded_sheet.h"

#include <gtest/gtest.h>

namespace {

constexpr UINT kTakeStep = WM_APP;

const std::map<UINT, std::string> kNames = {
    {PSN_SETACTIVE, "set active"}, {PSN_KILLACTIVE, "kill active"},   {PSN_APPLY, "apply"},
    {PSN_RESET, "reset"},          {PSN_QUERYCANCEL, "query cancel"}, {PSN_WIZBACK, "back"},
    {PSN_WIZNEXT, "next"},         {PSN_WIZFINISH, "finish"},
};

}  // namespace

void RecordedSheet::AddPage(const std::string& name, DWORD flags, TemplateBounds place) {
  TemplateBytes bytes(WS_POPUP | WS_CAPTION | DS_SETFONT, place, u"Page");
  if (place.height > 0) {
    bytes.Item(u"Edit", 1001, kStop, {5, 5, 80, 14}, u"text");
    bytes.Item(kButton, 1002, kStop | BS_AUTOCHECKBOX, {5, 25, 80, 12}, u"Check");
  }
  pages_.push_back({name, AddTemplate(bytes), flags});
}

void RecordedSheet::Answer(UINT code, LRESULT answer, const std::string& page) {
  for (const Page& each : pages_) {
    if (page.empty() || page == each.name) answers_[{each.name, code}] = answer;
  }
}

void RecordedSheet::MakePages() {
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
}

INT_PTR RecordedSheet::Run(std::vector<Step> steps) {
  steps_ = std::move(steps);
  taken_ = 0;
  notified_.clear();
  shown_.clear();
  windows_.clear();
  MakePages();
  PROPSHEETHEADERW header{};
  header.dwSize = PROPSHEETHEADERW_V1_SIZE;
  header.dwFlags = flags_;
  if (picture_ != 0) {
    header.dwSize = sizeof header;
    header.dwFlags |= PSH_WATERMARK | PSH_HEADER;
    header.hInstance = ::GetModuleHandleW(nullptr);
    header.pszbmWatermark = MAKEINTRESOURCEW(picture_);
    header.pszbmHeader = MAKEINTRESOURCEW(picture_);
  }
  header.pszCaption = L"Sheet";
  header.nPages = static_cast<UINT>(handles_.size());
  header.phpage = handles_.data();
  return ::PropertySheetW(&header);
}

INT_PTR CALLBACK RecordedSheet::Procedure(HWND page, UINT message, WPARAM, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      current_->Start(page, *reinterpret_cast<const PROPSHEETPAGEW*>(lParam));
      return TRUE;
    case kTakeStep:
      current_->TakeStep(page);
      return TRUE;
    case WM_NOTIFY: {
      const auto index = static_cast<std::size_t>(::GetWindowLongPtrW(page, GWLP_USERDATA));
      const auto& notification = *reinterpret_cast<const PSHNOTIFY*>(lParam);
      const LRESULT answer = current_->Receive(index, notification);
      ::SetWindowLongPtrW(page, DWLP_MSGRESULT, answer);
      return TRUE;
    }
    default:
      return FALSE;
  }
}

void RecordedSheet::Start(HWND window, const PROPSHEETPAGEW& record) {
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
void RecordedSheet::TakeStep(HWND page) {
  const bool isLast = taken_ == steps_.size();
  (isLast ? Press(PSBTN_CANCEL) : steps_[taken_++])(::GetParent(page));
  if (!isLast && ::IsWindow(page)) ::PostMessageW(page, kTakeStep, 0, 0);
}

LRESULT RecordedSheet::Receive(std::size_t page, const PSHNOTIFY& notification) {
  const UINT code = notification.hdr.code;
  notified_.push_back(pages_[page].name + ": " + kNames.at(code) +
                      (notification.lParam != 0 ? ", closing" : ""));
  if (code == PSN_SETACTIVE) {
    shown_ = pages_[page].name;
    const LPARAM back = page > 0 ? PSWIZB_BACK : 0;
    const LPARAM forward = page + 1 < pages_.size() ? PSWIZB_NEXT : PSWIZB_FINISH;
    if ((flags_ & PSH_WIZARD97) != 0)
      PropSheet_SetWizButtons(notification.hdr.hwndFrom, back | forward);
  }
  const auto answer = answers_.find({pages_[page].name, code});
  return answer != answers_.end() ? answer->second : 0;
}
