#include "frame/property_sheet.h"

#include <windows.h>

#include <prsht.h>

#include <algorithm>

namespace quillgate {

bool PropertySheet::Run(const std::wstring& caption) {
  if (pages_.empty() || pages_.front()->IsStopping()) return false;
  std::vector<HPROPSHEETPAGE> handles;
  for (PropertyPage* page : pages_)
    handles.push_back(page->CreateHandle());
  if (std::ranges::count(handles, nullptr) != 0) {
    std::ranges::for_each(handles, ::DestroyPropertySheetPage);
    return false;
  }

  PROPSHEETHEADERW header{};
  header.dwSize = PROPSHEETHEADERW_V1_SIZE;
  header.dwFlags = apply_ == Apply::kWithoutButton ? PSH_NOAPPLYNOW : 0;
  header.hInstance = ::GetModuleHandleW(nullptr);
  header.pszCaption = caption.c_str();
  header.nPages = static_cast<UINT>(handles.size());
  header.phpage = handles.data();
  return ::PropertySheetW(&header) >= 0 && !pages_.front()->IsStopping();
}

}  // namespace quillgate
