#include "ui/connection_details_page.h"

#include "frame/help_topics.h"
#include "frame/list_view.h"
#include "resources/resource.h"

namespace quillgate {
namespace {

constexpr int kPropertyColumn = 0;
constexpr int kValueColumn = 1;
}  // namespace

ConnectionDetailsPage::ConnectionDetailsPage(const UiSurroundings& ui, Settings& settings)
    : PropertyPage(ui, IDD_CONNECTION_DETAILS, kMsgDetails, kTopicConnectionDetails),
      settings_(settings) {}

bool ConnectionDetailsPage::OnInitDialog(HWND window) {
  const ListView list(window, IDC_PROPERTIES);
  list.SelectWholeRows();
  list.AddColumn({}, 0);
  list.AddColumn({}, 0);
  details_ = ReadAdapterDetails(settings_.GetSetting(SettingKey::kAdapter, {}));
  return true;
}

void ConnectionDetailsPage::SetTexts(HWND window) {
  Control(window, IDC_PROPERTIES_GROUP).SetText(Catalogue().GetMessageText(kMsgNetworkProperties));
  const ListView list(window, IDC_PROPERTIES);
  list.SetHeading(kPropertyColumn, Catalogue().GetMessageText(kMsgProperty));
  list.SetHeading(kValueColumn, Catalogue().GetMessageText(kMsgValue));
  list.Clear();
  for (const AdapterDetail& detail : details_) {
    const int row = list.AddRow(Catalogue().GetMessageText(detail.property));
    list.SetCell(row, kValueColumn, detail.value);
  }
  list.FitColumn(kPropertyColumn);
  list.FitColumn(kValueColumn);
}

}  // namespace quillgate
