#include "stats/session_list.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cwchar>
#include <limits>
#include <numeric>
#include <optional>
#include <unordered_map>

#include "text/locale_format.h"
#include "usage/stored_number.h"

namespace quillgate {
namespace {

// A start time in its stored form, "2005-03-14 18:05:09", which need not be a date.
std::optional<SYSTEMTIME> ParseTimestamp(const std::wstring& text) {
  constexpr std::wstring_view kShape = L"0000-00-00 00:00:00";
  if (text.size() != kShape.size()) return {};
  std::array<WORD, 6> fields{};
  auto field = fields.begin();
  for (std::size_t i = 0; i < kShape.size(); ++i) {
    const bool isDigit = text[i] >= L'0' && text[i] <= L'9';
    if (isDigit != (kShape[i] == L'0') || (!isDigit && text[i] != kShape[i])) return {};
    if (isDigit) {
      *field = static_cast<WORD>(*field * 10 + (text[i] - L'0'));
    } else {
      ++field;
    }
  }
  return SYSTEMTIME{fields[0], fields[1], 0, fields[2], fields[3], fields[4], fields[5], 0};
}

// Formats start times. Many sessions begin on the same day, whose text is formatted once.
class StartTexts {
 public:
  std::wstring Of(const std::wstring& stored) {
    const auto time = ParseTimestamp(stored);
    if (!time) return stored;
    std::wstring& date = dates_[stored.substr(0, kDateLength)];
    if (date.empty()) date = FormatDate(*time);
    const std::wstring timeOfDay = FormatTime(*time);
    return date.empty() || timeOfDay.empty() ? stored : date + L" " + timeOfDay;
  }

 private:
  static constexpr std::size_t kDateLength = 10;
  std::unordered_map<std::wstring, std::wstring> dates_;
};

template <class Format>
std::wstring NumberText(const std::wstring& stored, const Format& format) {
  const auto number = StoredNumber(stored);
  return number ? format(*number) : stored;
}

void Add(std::uint64_t& total, const std::wstring& stored) {
  total +=
      std::min(StoredNumber(stored).value_or(0), std::numeric_limits<std::uint64_t>::max() - total);
}

// The digits of a text as one number, without what separates them.
std::uint64_t DigitsOf(std::wstring text) {
  std::erase_if(text, [](wchar_t each) { return each < L'0' || each > L'9'; });
  return StoredNumber(text).value_or(0);
}

bool IsByteCount(SessionColumn column) {
  return column == SessionColumn::kDownloads || column == SessionColumn::kUploads;
}

// A stable sort of the sessions by the keys with their numbers.
template <class Keys>
void SortBy(const Keys& keys, bool descending, std::vector<std::size_t>& order) {
  std::ranges::stable_sort(order, [&](std::size_t first, std::size_t second) {
    return descending ? keys[second] < keys[first] : keys[first] < keys[second];
  });
}

}  // namespace

SessionList::SessionList(DbRows rows) : sessions_(std::move(rows)), order_(sessions_.size()) {
  std::iota(order_.begin(), order_.end(), std::size_t{0});
}

const std::wstring& SessionList::Field(std::size_t session, SessionColumn column) const {
  static const std::wstring kMissing;
  const DbRow& fields = sessions_[session];
  const auto index = static_cast<std::size_t>(column);
  return index < fields.size() ? fields[index] : kMissing;
}

std::wstring SessionList::Text(std::size_t row, SessionColumn column) const {
  return row < order_.size() ? TextOf(order_[row], column) : std::wstring();
}

std::wstring SessionList::TextOf(std::size_t session, SessionColumn column) const {
  const std::wstring& stored = Field(session, column);
  switch (column) {
    case SessionColumn::kDate:
      return StartTexts().Of(stored);
    case SessionColumn::kUser:
      break;
    case SessionColumn::kTime:
      return NumberText(stored, FormatDuration);
    case SessionColumn::kDownloads:
    case SessionColumn::kUploads:
      return NumberText(stored, FormatInteger);
  }
  return stored;
}

SessionTotals SessionList::Totals() const {
  SessionTotals totals;
  for (std::size_t session = 0; session < sessions_.size(); ++session) {
    Add(totals.seconds, Field(session, SessionColumn::kTime));
    Add(totals.bytesReceived, Field(session, SessionColumn::kDownloads));
    Add(totals.bytesSent, Field(session, SessionColumn::kUploads));
  }
  return totals;
}

std::vector<std::wstring> SessionList::SortTexts(SessionColumn column) const {
  StartTexts starts;
  std::vector<std::wstring> texts;
  for (std::size_t session = 0; session < sessions_.size(); ++session) {
    texts.push_back(column == SessionColumn::kDate ? starts.Of(Field(session, column))
                                                   : TextOf(session, column));
  }
  return texts;
}

std::vector<std::uint64_t> SessionList::SortNumbers(SessionColumn column) const {
  std::vector<std::uint64_t> numbers;
  for (std::size_t session = 0; session < sessions_.size(); ++session)
    numbers.push_back(DigitsOf(Field(session, column)));
  return numbers;
}

void SessionList::Sort(SessionColumn column, bool descending) {
  if (IsByteCount(column)) {
    SortBy(SortNumbers(column), descending, order_);
  } else {
    SortBy(SortTexts(column), descending, order_);
  }
}

}  // namespace quillgate
