#include "stats/top_list_page.h"

#include <utility>

#include "frame/control.h"
#include "frame/help_topics.h"
#include "frame/message_boxes.h"
#include "resources/resource.h"
#include "stats/top_list.h"

namespace quillgate {
namespace {

// A ranking and the controls that show it.
struct RankingControls {
  UsageMeasure measure;
  int group;
  MessageId title;
  int names;
  int values;
};
constexpr RankingControls kRankings[] = {
    {UsageMeasure::kSeconds, IDC_TOP_TIME_GROUP, kMsgTimeOnline, IDC_TOP_TIME_NAMES,
     IDC_TOP_TIME_VALUES},
    {UsageMeasure::kBytesReceived, IDC_TOP_DOWNLOADS_GROUP, kMsgDownloadsColumn,
     IDC_TOP_DOWNLOADS_NAMES, IDC_TOP_DOWNLOADS_VALUES},
    {UsageMeasure::kBytesSent, IDC_TOP_UPLOADS_GROUP, kMsgUploadsColumn, IDC_TOP_UPLOADS_NAMES,
     IDC_TOP_UPLOADS_VALUES},
};

Ranking ReadRanking(Database& database, UsageMeasure measure) {
  DbRows rows;
  if (!database.Run(TopListStatement(measure), rows)) throw BusyError();
  return RankingOf(rows, measure);
}

}  // namespace

TopListPage::TopListPage(const StatisticsSurroundings& surroundings)
    : PropertyPage(surroundings.ui, IDD_STATISTICS_TOP_LIST, kMsgTopList, kTopicStatisticsTopList),
      surroundings_(surroundings) {}

void TopListPage::SetTexts(HWND window) {
  for (const RankingControls& each : kRankings)
    Control(window, each.group).SetText(Catalogue().GetMessageText(each.title));
}

void TopListPage::OnActivated() {
  if (std::exchange(isFilled_, true)) return;
  for (const RankingControls& each : kRankings) {
    // A failure of one leaves the others.
    try {
      const Ranking ranking = ReadRanking(surroundings_.database, each.measure);
      Control(Window(), each.names).SetText(ranking.names);
      Control(Window(), each.values).SetText(ranking.values);
    } catch (...) {
      ShowCurrentException(Window(), Catalogue());
    }
  }
}

}  // namespace quillgate
