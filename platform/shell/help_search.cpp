#include "platform/shell/help_search.h"

#include <algorithm>
#include <sstream>

#include "platform/kernel/encoding.h"

namespace platform {
namespace {

constexpr std::size_t kLongestQuery = 200;

// What is searched for, in lower case.
struct Query {
  std::vector<std::wstring> words;
  std::wstring phrase;  // the words with one space between
};

Query QueryOf(std::wstring_view text) {
  std::wistringstream stream(LowerName(text.substr(0, kLongestQuery)));
  Query query;
  for (std::wstring word; stream >> word;) {
    query.phrase += (query.phrase.empty() ? L"" : L" ") + word;
    query.words.push_back(std::move(word));
  }
  return query;
}

bool Contains(const std::wstring& text, const std::wstring& part) {
  return text.find(part) != std::wstring::npos;
}

std::wstring MarkIn(const std::wstring& text, const Query& query) {
  if (Contains(text, query.phrase)) return query.phrase;
  const auto found =
      std::ranges::find_if(query.words, [&](const auto& word) { return Contains(text, word); });
  return found != query.words.end() ? *found : std::wstring();
}

}  // namespace

std::vector<HelpResult> SearchTopics(const std::vector<HelpTopic>& topics,
                                     std::wstring_view words) {
  const Query query = QueryOf(words);
  std::vector<HelpResult> results;
  if (query.words.empty()) return results;
  for (const HelpTopic& topic : topics) {
    const std::wstring title = LowerName(topic.title);
    const std::wstring text = LowerName(topic.text);
    const bool hasAll = std::ranges::all_of(query.words, [&](const std::wstring& word) {
      return Contains(title, word) || Contains(text, word);
    });
    if (hasAll) results.push_back({topic.title, topic.path, MarkIn(text, query)});
  }
  return results;
}

}  // namespace platform
