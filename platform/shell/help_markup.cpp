#include "platform/shell/help_markup.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/kernel/encoding.h"

namespace platform {
namespace {

constexpr std::wstring_view kSpaces = L" \t\r\n\f";
constexpr std::wstring_view kLetters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::size_t kLongestReference = 12;
constexpr std::uint32_t kLastCharacter = 0x10FFFF;

struct NamedCharacter {
  std::wstring_view name;
  wchar_t character;
};
constexpr std::array kNamedCharacters = {
    NamedCharacter{L"amp", L'&'},         NamedCharacter{L"lt", L'<'},
    NamedCharacter{L"gt", L'>'},          NamedCharacter{L"quot", L'"'},
    NamedCharacter{L"apos", L'\''},       NamedCharacter{L"nbsp", L'\u00A0'},
    NamedCharacter{L"copy", L'\u00A9'},   NamedCharacter{L"Auml", L'\u00C4'},
    NamedCharacter{L"Aring", L'\u00C5'},  NamedCharacter{L"Eacute", L'\u00C9'},
    NamedCharacter{L"Ouml", L'\u00D6'},   NamedCharacter{L"times", L'\u00D7'},
    NamedCharacter{L"Uuml", L'\u00DC'},   NamedCharacter{L"auml", L'\u00E4'},
    NamedCharacter{L"aring", L'\u00E5'},  NamedCharacter{L"eacute", L'\u00E9'},
    NamedCharacter{L"ouml", L'\u00F6'},   NamedCharacter{L"uuml", L'\u00FC'},
    NamedCharacter{L"ndash", L'\u2013'},  NamedCharacter{L"mdash", L'\u2014'},
    NamedCharacter{L"lsquo", L'\u2018'},  NamedCharacter{L"rsquo", L'\u2019'},
    NamedCharacter{L"ldquo", L'\u201C'},  NamedCharacter{L"rdquo", L'\u201D'},
    NamedCharacter{L"hellip", L'\u2026'}, NamedCharacter{L"rarr", L'\u2192'},
};

// Tags that stand inside a word or a line of text. All others end one.
constexpr std::array<std::wstring_view, 14> kInlineTags = {
    L"a",   L"abbr", L"b",     L"code", L"em",     L"font", L"i",
    L"kbd", L"span", L"small", L"sub",  L"strong", L"tt",   L"u"};

// 0: it is none.
std::uint32_t NumberedCharacter(std::wstring_view digits) {
  const bool isHexadecimal = digits.starts_with(L'x') || digits.starts_with(L'X');
  if (isHexadecimal) digits.remove_prefix(1);
  constexpr std::wstring_view kDigits = L"0123456789abcdef";
  const std::uint32_t base = isHexadecimal ? 16 : 10;
  std::uint32_t number = 0;
  for (const wchar_t digit : LowerName(digits)) {
    const std::size_t value = kDigits.find(digit);
    if (value >= base) return 0;
    number = number * base + static_cast<std::uint32_t>(value);
    if (number > kLastCharacter) return 0;
  }
  return number;
}

// The character of a reference without "&" and ";"; 0: there is none.
wchar_t ReferencedCharacter(std::wstring_view name) {
  if (name.starts_with(L'#')) return static_cast<wchar_t>(NumberedCharacter(name.substr(1)));
  const auto* found = std::ranges::find(kNamedCharacters, name, &NamedCharacter::name);
  return found != kNamedCharacters.end() ? found->character : L'\0';
}

bool IsInline(std::wstring_view tag) {
  if (tag.starts_with(L'/')) tag.remove_prefix(1);
  return std::ranges::count(kInlineTags, tag) > 0;
}

bool IsSpace(wchar_t letter) {
  return kSpaces.find(letter) != std::wstring_view::npos || letter == L'\u00A0';
}

// Adds the words of the text, with one space wherever there are spaces.
void AppendWords(std::wstring& to, std::wstring_view text) {
  for (const wchar_t letter : text) {
    if (!IsSpace(letter)) {
      to += letter;
    } else if (!to.empty() && to.back() != L' ') {
      to += L' ';
    }
  }
}

}  // namespace

std::wstring MarkupPiece::Attribute(std::wstring_view name) const {
  for (const auto& [each, value] : attributes) {
    if (each == name) return value;
  }
  return {};
}

std::optional<MarkupPiece> MarkupReader::Next() {
  while (at_ < markup_.size()) {
    if (IsAt(L"<!--")) {
      SkipPast(L"-->");
    } else if (IsAt(L"<!") || IsAt(L"<?")) {
      SkipPast(L">");
    } else {
      return IsAtTag() ? ReadTag() : ReadText();
    }
  }
  return std::nullopt;
}

bool MarkupReader::IsAtTag() const {
  const std::size_t name = IsAt(L"</") ? at_ + 2 : at_ + 1;
  return markup_[at_] == L'<' && name < markup_.size() &&
         kLetters.find(markup_[name]) != std::wstring_view::npos;
}

MarkupPiece MarkupReader::ReadTag() {
  MarkupPiece piece;
  ++at_;
  if (IsAt(L"/")) {
    piece.tag = L"/";
    ++at_;
  }
  piece.tag += LowerName(TakeUntil(L" \t\r\n\f/>"));
  for (SkipSpaces(); at_ < markup_.size() && markup_[at_] != L'>'; SkipSpaces()) {
    if (markup_[at_] == L'/' || markup_[at_] == L'=') {
      ++at_;
    } else {
      piece.attributes.push_back(ReadAttribute());
    }
  }
  if (at_ < markup_.size()) ++at_;
  return piece;
}

std::pair<std::wstring, std::wstring> MarkupReader::ReadAttribute() {
  std::wstring name = LowerName(TakeUntil(L" \t\r\n\f/>="));
  SkipSpaces();
  if (!IsAt(L"=")) return {std::move(name), std::wstring()};
  ++at_;
  SkipSpaces();
  return {std::move(name), ReadValue()};
}

std::wstring MarkupReader::ReadValue() {
  if (!IsAt(L"\"") && !IsAt(L"'")) return DecodeReferences(TakeUntil(L" \t\r\n\f>"));
  const std::wstring_view quote = markup_.substr(at_, 1);
  ++at_;
  std::wstring value = DecodeReferences(TakeUntil(quote));
  if (at_ < markup_.size()) ++at_;
  return value;
}

// The first character may be a "<" that begins no tag.
MarkupPiece MarkupReader::ReadText() {
  const std::size_t end = std::min(markup_.find(L'<', at_ + 1), markup_.size());
  MarkupPiece piece;
  piece.text = DecodeReferences(markup_.substr(at_, end - at_));
  at_ = end;
  return piece;
}

std::wstring_view MarkupReader::TakeUntil(std::wstring_view stops) {
  const std::size_t begin = at_;
  at_ = std::min(markup_.find_first_of(stops, at_), markup_.size());
  return markup_.substr(begin, at_ - begin);
}

void MarkupReader::SkipSpaces() {
  at_ = std::min(markup_.find_first_not_of(kSpaces, at_), markup_.size());
}

void MarkupReader::SkipPast(std::wstring_view end) {
  const std::size_t found = markup_.find(end, at_);
  at_ = found != std::wstring_view::npos ? found + end.size() : markup_.size();
}

std::wstring DecodeReferences(std::wstring_view text) {
  std::wstring decoded;
  while (!text.empty()) {
    const std::size_t length = text.substr(0, kLongestReference).find(L';');
    const bool isReference = text.front() == L'&' && length != std::wstring_view::npos;
    const wchar_t letter = isReference ? ReferencedCharacter(text.substr(1, length - 1)) : L'\0';
    decoded += letter != L'\0' ? letter : text.front();
    text.remove_prefix(letter != L'\0' ? length + 1 : 1);
  }
  return decoded;
}

std::wstring EscapeMarkup(std::wstring_view text) {
  std::wstring escaped;
  for (const wchar_t letter : text) {
    switch (letter) {
      case L'&':
        escaped += L"&amp;";
        break;
      case L'<':
        escaped += L"&lt;";
        break;
      case L'>':
        escaped += L"&gt;";
        break;
      default:
        escaped += letter;
    }
  }
  return escaped;
}

TopicText TextOfTopic(std::wstring_view markup) {
  TopicText topic;
  MarkupReader reader(markup);
  std::wstring inside;  // "title", "style" or "script"
  while (const auto piece = reader.Next()) {
    if (piece->tag == L"title" || piece->tag == L"style" || piece->tag == L"script") {
      inside = piece->tag;
    } else if (piece->tag == L"/" + inside) {
      inside.clear();
    } else if (inside == L"title") {
      AppendWords(topic.title, piece->text);
    } else if (inside.empty()) {
      AppendWords(topic.text, piece->tag.empty() || IsInline(piece->tag) ? piece->text : L" ");
    }
  }
  for (std::wstring* each : {&topic.title, &topic.text}) {
    if (each->ends_with(L' ')) each->pop_back();
  }
  return topic;
}

}  // namespace platform
