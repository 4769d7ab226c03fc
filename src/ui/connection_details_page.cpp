#include "ui/connection_details_page.h"

#include "resources/resource.h"
#include "ui/help_topics.h"
#include "ui/list_view.h"

namespace quillgate {
namespace {

constexpr int kPropertyColumn = 0;
constexpr int kValueColumn = 1;
constexpr int kPropertyWidth = 120;

// The rest of the list is the value's.
int ValueWidth(const ListView& list) {
  RECT area{};
  ::GetClientRect(list.Window(), &area);
  return area.right > kPropertyWidth ? area.right - kPropertyWidth : kPropertyWidth;
}

}  // namespace

ConnectionDetailsPage::ConnectionDetailsPage(const UiSurroundings& ui, Settings& settings)
    : PropertyPage(ui, IDD_CONNECTION_DETAILS, ui.catalogue.GetMessageText(kMsgDetails),
                   kTopicConnectionDetails),
      settings_(settings) {}

bool ConnectionDetailsPage::OnInitDialog(HWND window) {
  const ListView list(window, IDC_PROPERTIES);
  list.SelectWholeRows();
  list.AddColumn({}, kPropertyWidth);
  list.AddColumn({}, ValueWidth(list));
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
}

}  // namespace quillgate
