// The live page of the connection sheet: the running session, its transfer rates, and the usage of
// the user. Refreshed once a second. The usage is read from the database when the page opens and
// when a new session has begun; after a failure every refresh tries again. Other refreshes do not
// use the database.
#pragma once

#include <exception>
#include <optional>

#include "frame/property_page.h"
#include "ui/connection_sheet.h"
#include "ui/period_usage.h"

namespace quillgate {

class ConnectionGeneralPage final : public PropertyPage {
 public:
  ConnectionGeneralPage(const ConnectionSurroundings& surroundings, const SessionLog& session,
                        RateHistory& rates);

  void OnCancel(HWND window) override;

 private:
  INT_PTR DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;

  // Discards what does not change within a session.
  void Reset();
  void ReadUsage(const User& user);
  void Refresh(HWND window);
  void ShowSession(HWND window, const SessionReading& reading, const User& user) const;
  void ShowRates(HWND window);
  void ShowUsage(HWND window, const SessionReading& reading) const;

  ConnectionSurroundings surroundings_;
  const SessionLog& session_;
  RateHistory& rates_;
  LogonSystem logonSystem_ = LogonSystem::kNone;
  // Nullopt until the usage has been read; `readFailure_` is the exception of the last failed
  // attempt.
  std::optional<UsageOverview> usage_;
  std::exception_ptr readFailure_;
  int refreshes_ = 0;
};

}  // namespace quillgate
