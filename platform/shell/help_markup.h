// Reads HTML as far as the help viewer needs it: tags with their attributes, and text. Every input
// is accepted, as browsers do. A value on any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

struct MarkupPiece {
  // In lower case, "/p" for an end tag; empty for text.
  std::wstring tag;
  std::vector<std::pair<std::wstring, std::wstring>> attributes;  // names in lower case
  std::wstring text;

  // The value of the attribute; empty when there is none.
  std::wstring Attribute(std::wstring_view name) const;
};

class MarkupReader {
 public:
  // The markup must outlive the reader.
  explicit MarkupReader(std::wstring_view markup) : markup_(markup) {}

  // The next tag or text, without comments and declarations; nothing at the end.
  std::optional<MarkupPiece> Next();

 private:
  bool IsAtTag() const;
  MarkupPiece ReadTag();
  MarkupPiece ReadText();
  std::pair<std::wstring, std::wstring> ReadAttribute();
  std::wstring ReadValue();
  std::wstring_view TakeUntil(std::wstring_view stops);
  void SkipSpaces();
  void SkipPast(std::wstring_view end);
  bool IsAt(std::wstring_view text) const { return markup_.substr(at_).starts_with(text); }

  const std::wstring_view markup_;
  std::size_t at_ = 0;
};

// Replaces character references ("&amp;", "&#229;", "&aring;"). Unknown ones stay.
std::wstring DecodeReferences(std::wstring_view text);
// The opposite, for text that is put into markup.
std::wstring EscapeMarkup(std::wstring_view text);

// A topic as plain text, for the search: one space between words, blocks and lines.
struct TopicText {
  std::wstring title;
  std::wstring text;

  bool operator==(const TopicText&) const = default;
};
TopicText TextOfTopic(std::wstring_view markup);

}  // namespace platform
