#include "frame/property_sheet.h"

#include <windows.h>

#include <commctrl.h>
#include <prsht.h>

#include <algorithm>

namespace quillgate {

bool PropertySheet::Run() {
  if (pages_.empty() || pages_.front()->IsStopping()) return false;
  std::vector<HPROPSHEETPAGE> handles;
  for (PropertyPage* page : pages_)
    handles.push_back(page->CreateHandle());
  if (std::ranges::count(handles, nullptr) != 0) {
    std::ranges::for_each(handles, ::DestroyPropertySheetPage);
    return false;
  }
  for (PropertyPage* page : pages_)
    page->sheet_ = this;
  const bool shown = Show(std::move(handles));
  for (PropertyPage* page : pages_)
    page->sheet_ = nullptr;
  return shown;
}

bool PropertySheet::Show(std::vector<HPROPSHEETPAGE> handles) const {
  const std::wstring caption = catalogue_.GetMessageText(caption_);
  PROPSHEETHEADERW header{};
  header.dwSize = PROPSHEETHEADERW_V1_SIZE;
  header.dwFlags = apply_ == Apply::kWithoutButton ? PSH_NOAPPLYNOW : 0;
  header.hInstance = ::GetModuleHandleW(nullptr);
  header.pszCaption = caption.c_str();
  header.nPages = static_cast<UINT>(handles.size());
  header.phpage = handles.data();
  if (wizard_) MakeWizard(header);
  return ::PropertySheetW(&header) >= 0 && !pages_.front()->IsStopping();
}

void PropertySheet::MakeWizard(PROPSHEETHEADERW& header) const {
  header.dwSize = sizeof(header);
  header.dwFlags = PSH_WIZARD97 | PSH_WATERMARK | PSH_HEADER;
  header.pszbmWatermark = MAKEINTRESOURCEW(wizard_->watermark);
  header.pszbmHeader = MAKEINTRESOURCEW(wizard_->header);
}

void PropertySheet::RefreshTexts(HWND sheet) const {
  ::SetWindowTextW(sheet, catalogue_.GetMessageText(caption_).c_str());
  const HWND tabs = PropSheet_GetTabControl(sheet);
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    std::wstring title = catalogue_.GetMessageText(pages_[i]->title_);
    TCITEMW tab{};
    tab.mask = TCIF_TEXT;
    tab.pszText = title.data();
    ::SendMessageW(tabs, TCM_SETITEMW, i, reinterpret_cast<LPARAM>(&tab));
  }
}

void PropertySheet::Activate(const PropertyPage& page, HWND sheet) const {
  const auto index = std::ranges::find(pages_, &page) - pages_.begin();
  PropSheet_SetCurSel(sheet, nullptr, index);
}

}  // namespace quillgate
