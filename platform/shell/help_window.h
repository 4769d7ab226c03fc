// "HH Parent": the window of the help viewer, which shows the topics of one file. Not modal and
// without an owner, so that it stays usable beside the program's dialogs. Owned by its window, on
// the window thread.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/shell/help_book.h"
#include "platform/shell/help_history.h"
#include "platform/shell/help_peers.h"
#include "platform/user/control.h"
#include "platform/user/window.h"

namespace platform {

inline constexpr const wchar_t* kHelpWindowClass = L"HH Parent";

class HelpWindow final : public Control, private HelpEvents {
 public:
  explicit HelpWindow(Window& window) : window_(window) {}

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

  // Shows a topic of the book; an empty path is the default topic. For a topic that the book does
  // not contain, a page that says so in that language: false.
  bool ShowTopic(const std::shared_ptr<const HelpBook>& book, const HelpTarget& target,
                 LANGID language);

 private:
  void OnBack() override;
  void OnForward() override;
  void OnHome() override;
  void OnLink(const std::wstring& address) override;
  void OnEntry(std::size_t place) override;
  void OnResult(std::size_t place) override;
  void OnSearch(const std::wstring& words) override;
  const std::string* FindResource(const std::wstring& address) override;

  HelpViewerPeer* Peer() const { return static_cast<HelpViewerPeer*>(window_.Peer()); }
  void Open(const std::shared_ptr<const HelpBook>& book, LANGID language);
  void Visit(const HelpTarget& target, const std::wstring& mark = {});
  // Shows the current topic of the history.
  void ShowCurrent(const std::wstring& mark = {});
  std::wstring MarkupOf(const HelpTarget& target) const;
  std::wstring TitleOf(const HelpTarget& target) const;
  std::optional<std::size_t> EntryOf(const HelpTarget& target) const;

  Window& window_;
  // Null until the first topic is shown.
  std::shared_ptr<const HelpBook> book_;
  const HelpTexts* texts_ = nullptr;
  HelpHistory history_;
  std::vector<HelpResult> results_;
};

std::unique_ptr<Control> MakeHelpWindow(Window& window);

// The bounds of a new window: those of the last one, else large in the middle of the screen. For
// the window thread.
RECT NextHelpWindowBounds();

}  // namespace platform
