// The desktop's side of the help viewer: its window and its popups. For the window thread.
#pragma once

#include <windows.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/shell/help_contents.h"
#include "platform/shell/help_search.h"
#include "platform/shell/help_texts.h"
#include "platform/user/window_peer.h"

namespace platform {

// What the user does in the viewer's window. Called inside an event of the desktop; no window
// procedure is called then.
class HelpEvents {
 public:
  virtual ~HelpEvents() = default;

  virtual void OnBack() = 0;
  virtual void OnForward() = 0;
  virtual void OnHome() = 0;
  // A link in the topic, with the address that the topic names.
  virtual void OnLink(const std::wstring& address) = 0;
  // An entry of the contents and a result of the search, by its place in the list shown.
  virtual void OnEntry(std::size_t place) = 0;
  virtual void OnResult(std::size_t place) = 0;
  virtual void OnSearch(const std::wstring& words) = 0;
  // The bytes of a picture or style sheet that the topic refers to by that address; null when the
  // help does not contain it. Valid until the next topic is shown.
  virtual const std::string* FindResource(const std::wstring& address) = 0;
};

// A topic as it is shown.
struct HelpPage {
  std::wstring html;
  std::wstring anchor;  // to begin at; empty: the top
  std::wstring mark;    // its first occurrence is selected, in any case; empty: nothing is
};

class HelpViewerPeer : public WindowPeer {
 public:
  virtual void SetTexts(const HelpTexts& texts) = 0;
  virtual void SetContents(const std::vector<HelpEntry>& entries) = 0;
  // Marks the entry of the topic that is shown; nothing: it has none.
  virtual void SelectEntry(std::optional<std::size_t> place) = 0;
  // Shows the results of a search, which may be none.
  virtual void SetResults(const std::vector<HelpResult>& results) = 0;
  virtual void ShowPage(const HelpPage& page) = 0;
  // Which of Back and Forward are there to be used.
  virtual void SetPaths(bool back, bool forward) = 0;
  // A line below the topic, until the next one is shown.
  virtual void ShowNotice(const std::wstring& notice) = 0;
};

// Where and how a popup is shown.
struct HelpPopupLook {
  POINT point{};  // above the middle of the popup, in screen coordinates
  // Nothing: those of tool tips.
  std::optional<COLORREF> textColour;
  std::optional<COLORREF> background;
  // Pixels; negative: the width that is usual.
  RECT margins{};
};

// Shows the window's text in a tip, as large as it needs to be, without taking the focus. Requests
// to close the window at the user's next click or key, and when the program loses the focus.
class HelpPopupPeer : public WindowPeer {
 public:
  // Called before the popup is shown.
  virtual void SetLook(const HelpPopupLook& look) = 0;
};

class HelpPeers {
 public:
  virtual ~HelpPeers() = default;

  // The events must outlive the peer.
  virtual std::unique_ptr<HelpViewerPeer> MakeViewer(WindowEvents& events,
                                                     HelpEvents& helpEvents) = 0;
  virtual std::unique_ptr<HelpPopupPeer> MakePopup(WindowEvents& events) = 0;
};

// Implemented by the desktop module.
class HelpSide {
 public:
  virtual ~HelpSide() = default;
  virtual HelpPeers& Help() = 0;
};

}  // namespace platform
