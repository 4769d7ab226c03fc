#include "stats/session_query.h"

#include <unordered_set>

#include "stats/session_list.h"
#include "usage/automation_date.h"

namespace quillgate {
namespace {

std::wstring DateText(std::chrono::sys_days day) {
  constexpr std::chrono::sys_days kAutomationEpoch = std::chrono::year(1899) / 12 / 30;
  return FormatDay(static_cast<DATE>((day - kAutomationEpoch).count()));
}

// An apostrophe is doubled: the text is a sequence of quoted texts without a gap.
std::wstring QuotedName(std::wstring_view name) {
  std::wstring quoted;
  while (true) {
    const std::size_t end = name.find(L'\'');
    quoted += SqlText(name.substr(0, end));
    if (end == std::wstring_view::npos) return quoted;
    name.remove_prefix(end + 1);
  }
}

std::wstring IntervalStatement(const DateInterval& interval) {
  return L"SELECT StartDate, User, Seconds, BytesRecv, BytesSent FROM ConnLog WHERE StartDate >= "
         L"'" +
         DateText(interval.first) + L" 00:00:00' AND StartDate <= '" + DateText(interval.last) +
         L" 23:59:59'";
}

DbRows Query(Database& database, const std::wstring& sql) {
  DbRows rows;
  if (!database.Run(sql, rows)) throw BusyError();
  return rows;
}

}  // namespace

std::wstring SessionStatement(const DateInterval& interval, const UserFilter& filter) {
  std::wstring names;
  for (const std::wstring& name : filter.names)
    names += (names.empty() ? L"" : L", ") + QuotedName(name);
  return IntervalStatement(interval) + L" AND User IN (" + names + L");";
}

DbRows ReadSessions(Database& database, const DateInterval& interval, const UserFilter& filter) {
  const std::wstring sql = SessionStatement(interval, filter);
  if (!filter.isEveryone || FitsStatement(sql)) return Query(database, sql);
  constexpr auto kUserColumn = static_cast<std::size_t>(SessionColumn::kUser);
  DbRows rows = Query(database, IntervalStatement(interval) + L";");
  const std::unordered_set<std::wstring_view> names(filter.names.begin(), filter.names.end());
  std::erase_if(rows, [&](const DbRow& row) { return !names.contains(row[kUserColumn]); });
  return rows;
}

}  // namespace quillgate
