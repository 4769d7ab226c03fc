// The text search of the help viewer. Any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/shell/help_book.h"

namespace platform {

struct HelpResult {
  std::wstring title;
  std::wstring path;
  // What to select in the topic: the words as typed if they stand there so, else the first of them
  // that does. Empty when only the title has them.
  std::wstring mark;

  bool operator==(const HelpResult&) const = default;
};

// The topics that contain every word, whole or as a part of another one, in any case, in the order
// of the topics given. No words: none.
std::vector<HelpResult> SearchTopics(const std::vector<HelpTopic>& topics, std::wstring_view words);

}  // namespace platform
