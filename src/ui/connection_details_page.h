// The page of the connection sheet with the details of the measured adapter, as they were when the
// page was created.
#pragma once

#include <vector>

#include "frame/property_page.h"
#include "storage/settings.h"
#include "ui/adapter_details.h"

namespace quillgate {

class ConnectionDetailsPage final : public PropertyPage {
 public:
  ConnectionDetailsPage(const UiSurroundings& ui, Settings& settings);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;

  Settings& settings_;
  std::vector<AdapterDetail> details_;
};

}  // namespace quillgate
