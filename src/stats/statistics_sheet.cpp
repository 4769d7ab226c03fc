#include "stats/statistics_sheet.h"

#include "frame/property_sheet.h"
#include "stats/details_page.h"
#include "stats/top_list_page.h"

namespace quillgate {

void StatisticsSheet::Open(const std::vector<std::wstring>& users) {
  DetailsPage details(surroundings_, users);
  TopListPage topList(surroundings_);
  PropertySheet sheet(surroundings_.ui.catalogue, kMsgStatistics,
                      PropertySheet::Apply::kWithoutButton);
  sheet.Add(details);
  sheet.Add(topList);
  sheet.Run();
}

}  // namespace quillgate
