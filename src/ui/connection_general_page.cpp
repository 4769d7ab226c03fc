#include "ui/connection_general_page.h"

#include "frame/control.h"
#include "frame/help_topics.h"
#include "resources/resource.h"
#include "text/locale_format.h"

namespace quillgate {
namespace {

constexpr UINT_PTR kRefreshTimer = 1;
constexpr UINT kRefreshMilliseconds = 1000;
// With fewer refreshes the average would cover fewer than eight seconds.
constexpr int kRefreshesToWarmUp = 7;
constexpr double kMegabytesPerByte = 9.5367431640625e-07;
constexpr wchar_t kUnknown[] = L"-";

constexpr ControlText kLabels[] = {
    {IDC_SESSION_GROUP, kMsgSessionInformation},
    {IDC_USER_NAME_LABEL, kMsgUserNameLabel},
    {IDC_STATUS_LABEL, kMsgConnectionStatusLabel},
    {IDC_DURATION_LABEL, kMsgDurationLabel},
    {IDC_RECEIVED_LABEL, kMsgDownloadedBytesLabel},
    {IDC_SENT_LABEL, kMsgUploadedBytesLabel},
    {IDC_RATES_GROUP, kMsgTransferRates},
    {IDC_DOWNLOAD_RATE_LABEL, kMsgDownloadRateLabel},
    {IDC_UPLOAD_RATE_LABEL, kMsgUploadRateLabel},
    {IDC_PERIOD_GROUP, kMsgCurrentStatistics},
    {IDC_TODAY_HEAD, kMsgToday},
    {IDC_WEEK_HEAD, kMsgWeek},
    {IDC_MONTH_HEAD, kMsgMonth},
    {IDC_TIME_ONLINE_LABEL, kMsgTimeOnlineLabel},
    {IDC_DOWNLOADS_LABEL, kMsgDownloadsLabel},
    {IDC_UPLOADS_LABEL, kMsgUploadsLabel},
};

// The value controls of one period, and the member with its usage.
struct PeriodColumn {
  PeriodUsage UsageOverview::*usage;
  int timeOnline;
  int downloads;
  int uploads;
};
constexpr PeriodColumn kColumns[] = {
    {&UsageOverview::today, IDC_TIME_ONLINE_TODAY, IDC_DOWNLOADS_TODAY, IDC_UPLOADS_TODAY},
    {&UsageOverview::week, IDC_TIME_ONLINE_WEEK, IDC_DOWNLOADS_WEEK, IDC_UPLOADS_WEEK},
    {&UsageOverview::month, IDC_TIME_ONLINE_MONTH, IDC_DOWNLOADS_MONTH, IDC_UPLOADS_MONTH},
};

std::wstring Megabytes(std::uint64_t bytes) {
  return FormatDecimal(static_cast<double>(bytes) * kMegabytesPerByte);
}

std::wstring RateText(std::uint64_t rate) {
  return FormatDecimal(static_cast<double>(rate));
}

}  // namespace

ConnectionGeneralPage::ConnectionGeneralPage(const ConnectionSurroundings& surroundings,
                                             const SessionLog& session, RateHistory& rates)
    : PropertyPage(surroundings.ui, IDD_CONNECTION_GENERAL, kMsgGeneral, kTopicConnectionGeneral),
      surroundings_(surroundings),
      session_(session),
      rates_(rates) {}

bool ConnectionGeneralPage::OnInitDialog(HWND window) {
  Control(::GetParent(window), IDOK).Show(false);
  // Before the database is used, so that the page is refreshed even if the database fails.
  ::SetTimer(window, kRefreshTimer, kRefreshMilliseconds, nullptr);
  Reset();
  Refresh(window);
  if (!usage_ && readFailure_) std::rethrow_exception(readFailure_);
  return true;
}

void ConnectionGeneralPage::SetTexts(HWND window) {
  Control(::GetParent(window), IDCANCEL).SetText(Catalogue().GetMessageText(kMsgClose));
  ShowTexts(kLabels);
}

INT_PTR ConnectionGeneralPage::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM) {
  if (message != WM_TIMER || wParam != kRefreshTimer) return FALSE;
  Refresh(window);
  return TRUE;
}

void ConnectionGeneralPage::OnCancel(HWND window) {
  ::KillTimer(window, kRefreshTimer);
}

void ConnectionGeneralPage::Reset() {
  usage_.reset();
  logonSystem_ = CurrentLogonSystem(surroundings_.settings);
}

void ConnectionGeneralPage::ReadUsage(const User& user) {
  try {
    usage_ = ReadUsageOverview(user.Name(), surroundings_.database, surroundings_.calendar);
  } catch (const DBerror&) {
    readFailure_ = std::current_exception();
  }
}

void ConnectionGeneralPage::Refresh(HWND window) {
  const auto user = surroundings_.logon.CurrentUser();
  if (user == nullptr) {
    PropSheet_PressButton(::GetParent(window), PSBTN_CANCEL);
    return;
  }
  const SessionReading reading = session_.Reading();
  const bool isOfNewSession = rates_.IsOfNewSession(reading);
  if (isOfNewSession) rates_.Restart();
  rates_.Add(reading);
  if (isOfNewSession) Reset();
  if (!usage_) ReadUsage(*user);
  ShowRates(window);
  ShowSession(window, reading, *user);
  ShowUsage(window, reading);
}

void ConnectionGeneralPage::ShowRates(HWND window) {
  std::wstring download;
  std::wstring upload;
  if (refreshes_ >= kRefreshesToWarmUp) {
    download = RateText(rates_.DownloadRate());
    upload = RateText(rates_.UploadRate());
  } else {
    if (refreshes_ % 2 == 0) download = upload = Catalogue().GetMessageText(kMsgWait);
    ++refreshes_;
  }
  Control(window, IDC_DOWNLOAD_RATE).SetText(download);
  Control(window, IDC_UPLOAD_RATE).SetText(upload);
}

void ConnectionGeneralPage::ShowSession(HWND window, const SessionReading& reading,
                                        const User& user) const {
  Control(window, IDC_USER_NAME)
      .SetText(logonSystem_ == LogonSystem::kNone ? kUnknown : user.Name());
  Control(window, IDC_STATUS)
      .SetText(Catalogue().GetMessageText(reading.online ? kMsgEnabled : kMsgDisabled));
  Control(window, IDC_DURATION)
      .SetText(reading.online ? FormatDuration(reading.seconds) : kUnknown);
  Control(window, IDC_RECEIVED).SetText(FormatInteger(reading.bytesReceived));
  Control(window, IDC_SENT).SetText(FormatInteger(reading.bytesSent));
}

void ConnectionGeneralPage::ShowUsage(HWND window, const SessionReading& reading) const {
  for (const PeriodColumn& column : kColumns) {
    if (!usage_) {
      for (const int control : {column.timeOnline, column.downloads, column.uploads})
        Control(window, control).SetText(kUnknown);
      continue;
    }
    const PeriodUsage& usage = *usage_.*column.usage;
    Control(window, column.timeOnline).SetText(FormatDuration(usage.seconds + reading.seconds));
    Control(window, column.downloads)
        .SetText(Megabytes(usage.bytesReceived + reading.bytesReceived));
    Control(window, column.uploads).SetText(Megabytes(usage.bytesSent + reading.bytesSent));
  }
}

}  // namespace quillgate
