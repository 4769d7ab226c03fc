// The statistics sheet's page of the three rankings over the whole log. They are read once, when
// the page is first shown. Owned by the sheet, used on the service main thread.
#pragma once

#include "frame/property_page.h"
#include "stats/statistics_sheet.h"

namespace quillgate {

class TopListPage final : public PropertyPage {
 public:
  explicit TopListPage(const StatisticsSurroundings& surroundings);

 private:
  void SetTexts(HWND window) override;
  void OnActivated() override;

  const StatisticsSurroundings& surroundings_;
  bool isFilled_ = false;
};

}  // namespace quillgate
