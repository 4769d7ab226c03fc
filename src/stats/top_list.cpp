#include "stats/top_list.h"

#include "text/locale_format.h"
#include "usage/stored_number.h"

namespace quillgate {
namespace {

std::wstring_view ResultColumnOf(UsageMeasure measure) {
  switch (measure) {
    case UsageMeasure::kSeconds:
      return L"Secs";
    case UsageMeasure::kBytesReceived:
      return L"DL";
    case UsageMeasure::kBytesSent:
      return L"UL";
  }
  return {};
}

std::wstring TotalText(const std::wstring& sum, UsageMeasure measure) {
  const std::uint64_t total = StoredSum(sum);
  return measure == UsageMeasure::kSeconds ? FormatDuration(total) : FormatInteger(total);
}

}  // namespace

std::wstring TopListStatement(UsageMeasure measure) {
  constexpr std::wstring_view kGap = L"\t\t\t                ";
  const std::wstring_view result = ResultColumnOf(measure);
  std::wstring sql = L"SELECT User, SUM(";
  sql.append(ColumnOf(measure)).append(L") AS ").append(result).append(L" FROM ConnLog ");
  sql.append(kGap).append(L"GROUP BY User ORDER BY ").append(result);
  return sql.append(L" DESC LIMIT 5;");
}

Ranking RankingOf(const DbRows& rows, UsageMeasure measure) {
  Ranking ranking;
  int rank = 1;
  for (const DbRow& row : rows) {
    ranking.names += std::to_wstring(rank++) + L". " + row[0] + L"\n";
    ranking.values += TotalText(row[1], measure) + L"\n";
  }
  return ranking;
}

}  // namespace quillgate
