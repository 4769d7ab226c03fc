#include "platform/shell/help_contents.h"

#include <algorithm>

#include "platform/kernel/encoding.h"
#include "platform/shell/help_markup.h"

namespace platform {
namespace {

constexpr std::size_t kDeepest = 20;

class SiteMap {
 public:
  explicit SiteMap(std::wstring_view path) : path_(path) {}

  void Take(const MarkupPiece& piece);
  std::vector<HelpEntry> Entries() && { return std::move(entries_); }

 private:
  void TakeParameter(const MarkupPiece& piece);
  void Finish();

  const std::wstring_view path_;
  std::vector<HelpEntry> entries_;
  std::size_t lists_ = 0;  // that are open
  bool isInEntry_ = false;
  HelpEntry entry_;
};

void SiteMap::Take(const MarkupPiece& piece) {
  if (piece.tag == L"ul") {
    ++lists_;
  } else if (piece.tag == L"/ul") {
    lists_ -= std::min<std::size_t>(lists_, 1);
  } else if (piece.tag == L"object") {
    isInEntry_ = EqualNames(piece.Attribute(L"type"), L"text/sitemap");
    entry_ = {};
  } else if (piece.tag == L"param" && isInEntry_) {
    TakeParameter(piece);
  } else if (piece.tag == L"/object" && isInEntry_) {
    Finish();
  }
}

// An entry may name several topics; the first is its own.
void SiteMap::TakeParameter(const MarkupPiece& piece) {
  const std::wstring name = piece.Attribute(L"name");
  if (EqualNames(name, L"Name") && entry_.title.empty()) {
    entry_.title = piece.Attribute(L"value");
  } else if (EqualNames(name, L"Local") && !entry_.target.has_value()) {
    entry_.target = ResolveHelpAddress(path_, piece.Attribute(L"value"));
  }
}

void SiteMap::Finish() {
  isInEntry_ = false;
  if (entry_.title.empty()) return;
  const std::size_t deepest = entries_.empty() ? 0 : entries_.back().level + 1;
  const std::size_t level = lists_ - std::min<std::size_t>(lists_, 1);
  entry_.level = std::min({level, deepest, kDeepest});
  entries_.push_back(std::move(entry_));
}

}  // namespace

std::vector<HelpEntry> ParseSiteMap(std::wstring_view markup, std::wstring_view path) {
  SiteMap map(path);
  MarkupReader reader(markup);
  while (const auto piece = reader.Next())
    map.Take(*piece);
  return std::move(map).Entries();
}

}  // namespace platform
