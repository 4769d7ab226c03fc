#include "platform/dialog/recorded_sheet.h"

#include "platform/dialog/scripted_dialog.h"

namespace {

constexpr DWORD kPageStyle = WS_POPUP | WS_CAPTION | DS_SETFONT;
constexpr DWORD kItem = WS_CHILD | WS_VISIBLE | WS_TABSTOP;

RecordedSheet* current = nullptr;

std::string Describe(const PSHNOTIFY& notification) {
  switch (notification.hdr.code) {
    case PSN_SETACTIVE:
      return "set active";
    case PSN_KILLACTIVE:
      return "kill active";
    case PSN_APPLY:
      return notification.lParam != 0 ? "apply, closing" : "apply";
    case PSN_RESET:
      return notification.lParam != 0 ? "reset by close box" : "reset";
    case PSN_QUERYCANCEL:
      return "query cancel";
    case PSN_WIZBACK:
      return "back";
    case PSN_WIZNEXT:
      return "next";
    case PSN_WIZFINISH:
      return "finish";
    default:
      return std::to_string(notification.hdr.code);
  }
}

}  // namespace

RecordedSheet::RecordedSheet(DWORD flags) : flags_(flags) {
  KeepDesktop();
  current = this;
}

RecordedSheet::~RecordedSheet() {
  current = nullptr;
}

void RecordedSheet::AddPage(const std::string& name, DWORD flags, TemplatePlace place) {
  TemplateBytes bytes(kPageStyle, place, u"Page");
  if (place.height > 0) {
    bytes.Item(u"Edit", 1001, kItem, {5, 5, 80, 14}, u"text");
    bytes.Item(0x80, 1002, kItem | BS_AUTOCHECKBOX, {5, 25, 80, 12}, u"Check");
  }
  pages_.push_back({name, AddTemplate(bytes), flags});
}

void RecordedSheet::Answer(UINT code, LRESULT answer, const std::string& page) {
  for (const Page& each : pages_) {
    if (page.empty() || page == each.name) answers_[{each.name, code}] = answer;
  }
}

void RecordedSheet::CloseWhenShown(int button) {
  onInit_ = [button](HWND page) {
    ::PostMessageW(::GetParent(page), WM_COMMAND, static_cast<WPARAM>(button), 0);
  };
}

INT_PTR RecordedSheet::Run() {
  return RunWith(MakePages());
}

std::vector<HPROPSHEETPAGE> RecordedSheet::MakePages() {
  std::vector<HPROPSHEETPAGE> made;
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    PROPSHEETPAGEW record{};
    record.dwSize = PROPSHEETPAGEW_V2_SIZE;
    record.pszHeaderTitle = L"Header";
    record.pszHeaderSubTitle = L"Sub";
    record.dwFlags = pages_[i].flags | PSP_USETITLE;
    record.pszTemplate = pages_[i].templateName;
    record.pszTitle = L"Title";
    record.pfnDlgProc = Procedure;
    record.lParam = static_cast<LPARAM>(i);
    made.push_back(::CreatePropertySheetPageW(&record));
  }
  return made;
}

INT_PTR RecordedSheet::RunWith(std::vector<HPROPSHEETPAGE> pages) {
  told_.clear();
  shown_.clear();
  windows_.clear();
  PROPSHEETHEADERW header{};
  header.dwSize = PROPSHEETHEADERW_V1_SIZE;
  header.dwFlags = flags_;
  if (picture_ != 0) {
    header.dwSize = PROPSHEETHEADERW_V2_SIZE;
    header.dwFlags |= PSH_WATERMARK | PSH_HEADER;
    header.hInstance = ::GetModuleHandleW(nullptr);
    header.pszbmWatermark = MAKEINTRESOURCEW(picture_);
    header.pszbmHeader = MAKEINTRESOURCEW(picture_);
  }
  header.pszCaption = L"Sheet";
  header.nPages = static_cast<UINT>(pages.size());
  header.phpage = pages.data();
  return ::PropertySheetW(&header);
}

const std::string& RecordedSheet::NameOf(HWND window) const {
  const auto index = static_cast<std::size_t>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  return pages_[index].name;
}

INT_PTR CALLBACK RecordedSheet::Procedure(HWND page, UINT message, WPARAM, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      current->Start(page, *reinterpret_cast<const PROPSHEETPAGEW*>(lParam));
      return TRUE;
    case WM_TIMER:
      if (current->onTimer_) current->onTimer_(page);
      return TRUE;
    case WM_NOTIFY: {
      const auto& notification = *reinterpret_cast<const PSHNOTIFY*>(lParam);
      const LRESULT answer = current->Hear(current->NameOf(page), notification);
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
  windows_[page.name] = window;
  told_.push_back(page.name + ": init");
  gaveRecord_ = record.pfnDlgProc == Procedure && record.pszTemplate == page.templateName &&
                std::wstring(record.pszTitle) == L"Title";
  if (onInit_) onInit_(window);
}

LRESULT RecordedSheet::Hear(const std::string& page, const PSHNOTIFY& notification) {
  told_.push_back(page + ": " + Describe(notification));
  if (notification.hdr.code == PSN_SETACTIVE) {
    shown_ = page;
    const auto buttons = buttons_.find(page);
    if (buttons != buttons_.end())
      PropSheet_SetWizButtons(notification.hdr.hwndFrom, buttons->second);
  }
  const auto answer = answers_.find({page, notification.hdr.code});
  return answer != answers_.end() ? answer->second : 0;
}
