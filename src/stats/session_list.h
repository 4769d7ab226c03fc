// The sessions of the statistics: their texts, totals and order. Plain values without windows.
// Used by the page that shows them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "storage/db_row.h"

namespace quillgate {

// In the order of the statement that reads them.
enum class SessionColumn { kDate, kUser, kTime, kDownloads, kUploads };
inline constexpr int kSessionColumnCount = 5;

struct SessionTotals {
  std::uint64_t seconds = 0;
  std::uint64_t bytesReceived = 0;
  std::uint64_t bytesSent = 0;
};

class SessionList {
 public:
  SessionList() = default;
  // Rows of StartDate, User, Seconds, BytesRecv and BytesSent, in the order in which they are
  // listed until they are sorted.
  explicit SessionList(DbRows rows);

  std::size_t Count() const { return order_.size(); }

  // What a cell shows, in the user's formats; the stored text as it is when it is no date or no
  // number; empty for a missing field.
  std::wstring Text(std::size_t row, SessionColumn column) const;

  // Texts that are no numbers count as nothing.
  SessionTotals Totals() const;

  // Numbers are compared as such, and all others as the texts that are shown: dates are not in the
  // order of time. Deliberate, see docs/behaviour.md. Equal rows keep their order.
  void Sort(SessionColumn column, bool descending);

  // The session that a row shows, by its number in the rows given: rows change when sorted,
  // sessions do not.
  std::size_t SessionAt(std::size_t row) const { return order_[row]; }

 private:
  const std::wstring& Field(std::size_t session, SessionColumn column) const;
  std::wstring TextOf(std::size_t session, SessionColumn column) const;
  std::vector<std::wstring> SortTexts(SessionColumn column) const;
  std::vector<std::uint64_t> SortNumbers(SessionColumn column) const;

  DbRows sessions_;
  std::vector<std::size_t> order_;
};

}  // namespace quillgate
