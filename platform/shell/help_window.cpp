#include "platform/shell/help_window.h"

#include <algorithm>

#include "platform/dialog/dialog_creation.h"
#include "platform/kernel/encoding.h"
#include "platform/shell/help_markup.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

constexpr SIZE kFirstSize = {880, 620};

// Where the last window was.
std::optional<RECT>& LastBounds() {
  static std::optional<RECT> bounds;
  return bounds;
}

bool IsSamePath(const std::optional<HelpTarget>& target, const HelpTarget& other) {
  return target.has_value() && EqualNames(target->path, other.path);
}

}  // namespace

RECT NextHelpWindowBounds() {
  if (LastBounds().has_value()) return *LastBounds();
  POINT cursor{};
  ::GetCursorPos(&cursor);
  const RECT area = Desktop().Windows().WorkArea(cursor);
  const SIZE largest = {(area.right - area.left) * 9 / 10, (area.bottom - area.top) * 9 / 10};
  return CentredBounds({std::min(kFirstSize.cx, largest.cx), std::min(kFirstSize.cy, largest.cy)},
                       cursor);
}

std::unique_ptr<Control> MakeHelpWindow(Window& window) {
  return std::make_unique<HelpWindow>(window);
}

std::unique_ptr<WindowPeer> HelpWindow::MakePeer(Window& window, WindowPeer* /*parent*/) {
  return DesktopSide<HelpSide>().Help().MakeViewer(window.Events(), *this);
}

std::optional<LRESULT> HelpWindow::Answer(UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
  if (message == WM_DESTROY) LastBounds() = window_.Bounds();
  return std::nullopt;
}

bool HelpWindow::ShowTopic(const std::shared_ptr<const HelpBook>& book, const HelpTarget& target,
                           LANGID language) {
  Open(book, language);
  const HelpTarget& wanted = target.path.empty() ? book->home : target;
  Visit(wanted);
  return book->file.Find(wanted.path) != nullptr;
}

void HelpWindow::Open(const std::shared_ptr<const HelpBook>& book, LANGID language) {
  const HelpTexts* texts = &HelpTextsIn(language);
  if (texts_ != texts && Peer() != nullptr) Peer()->SetTexts(*texts);
  texts_ = texts;
  if (book_ == book) return;
  // The same topics have the same paths in another language, so the history stays.
  book_ = book;
  results_.clear();
  if (Peer() == nullptr) return;
  Peer()->SetContents(book->contents);
  Peer()->SetResults(results_);
}

void HelpWindow::Visit(const HelpTarget& target, const std::wstring& mark) {
  history_.Visit(target);
  ShowCurrent(mark);
}

void HelpWindow::ShowCurrent(const std::wstring& mark) {
  const HelpTarget current = history_.Current();
  window_.SetText(TitleOf(current));
  if (Peer() == nullptr) return;
  Peer()->ShowPage({MarkupOf(current), current.anchor, mark});
  Peer()->SelectEntry(EntryOf(current));
  Peer()->SetPaths(history_.CanGoBack(), history_.CanGoForward());
}

std::wstring HelpWindow::MarkupOf(const HelpTarget& target) const {
  const std::string* found = book_->file.Find(target.path);
  if (found != nullptr) return HelpTextOf(*found);
  std::wstring page = L"<h2>";
  page.append(texts_->missingTitle).append(L"</h2><p>").append(texts_->missingText);
  return page + L"</p><p><b>" + EscapeMarkup(target.path) + L"</b></p>";
}

std::wstring HelpWindow::TitleOf(const HelpTarget& target) const {
  if (!book_->title.empty()) return book_->title;
  const auto topic = std::ranges::find_if(
      book_->topics, [&](const HelpTopic& each) { return EqualNames(each.path, target.path); });
  return topic != book_->topics.end() ? topic->title : std::wstring(texts_->help);
}

// An entry for the very place in the topic comes before one for the topic.
std::optional<std::size_t> HelpWindow::EntryOf(const HelpTarget& target) const {
  const auto& entries = book_->contents;
  auto found = std::ranges::find_if(entries, [&](const HelpEntry& entry) {
    return IsSamePath(entry.target, target) && entry.target->anchor == target.anchor;
  });
  if (found == entries.end()) {
    found = std::ranges::find_if(
        entries, [&](const HelpEntry& entry) { return IsSamePath(entry.target, target); });
  }
  if (found == entries.end()) return std::nullopt;
  return static_cast<std::size_t>(found - entries.begin());
}

void HelpWindow::OnBack() {
  if (!history_.CanGoBack()) return;
  history_.GoBack();
  ShowCurrent();
}

void HelpWindow::OnForward() {
  if (!history_.CanGoForward()) return;
  history_.GoForward();
  ShowCurrent();
}

void HelpWindow::OnHome() {
  if (book_ != nullptr) Visit(book_->home);
}

// The service's rights and the user's restrictions forbid to open anything else.
void HelpWindow::OnLink(const std::wstring& address) {
  const auto target = ResolveHelpAddress(history_.Current().path, address);
  if (target.has_value()) {
    Visit(*target);
  } else {
    Peer()->ShowNotice(std::wstring(texts_->outside) + address);
  }
}

void HelpWindow::OnEntry(std::size_t place) {
  if (book_ == nullptr || place >= book_->contents.size()) return;
  if (const auto& target = book_->contents[place].target) Visit(*target);
}

void HelpWindow::OnResult(std::size_t place) {
  if (place < results_.size()) Visit({results_[place].path, {}}, results_[place].mark);
}

void HelpWindow::OnSearch(const std::wstring& words) {
  if (book_ == nullptr) return;
  results_ = SearchTopics(book_->topics, words);
  Peer()->SetResults(results_);
}

const std::string* HelpWindow::FindResource(const std::wstring& address) {
  const auto target = ResolveHelpAddress(history_.Current().path, address);
  return target.has_value() && book_ != nullptr ? book_->file.Find(target->path) : nullptr;
}

}  // namespace platform
