// A display that somebody's session offers to this process, and which of several is joined. Values.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/account/seat_state.h"

namespace platform {

struct DisplayOffer {
  std::string display;   // of X11 and of this machine: ":0", ":1.0"
  std::wstring session;  // logind's identifier of the session; empty: not known

  bool operator==(const DisplayOffer&) const = default;
};

// Whether the text is a display of this machine: a colon, its number and perhaps a screen's.
bool IsLocalDisplay(std::string_view display);

// The message by which a session makes its offer. Decoding anything else gives nothing.
std::string EncodeOffer(const DisplayOffer& offer);
std::optional<DisplayOffer> DecodeOffer(std::string_view message);

// The account whose offers are taken while nobody is at the screen.
inline constexpr std::wstring_view kRootAccount = L"root";

struct HeldOffer {
  DisplayOffer offer;
  std::wstring account;  // who offers, without a domain

  bool operator==(const HeldOffer&) const = default;
};

// The latest offer of the person on the seat's screen, from the session there if it is known; while
// nobody is there, root's latest. The offers are in the order in which they came. Null: none is
// taken.
const HeldOffer* ChooseOffer(std::span<const HeldOffer> offers, const SeatState& seat);

// Whether the two come from different sessions, as far as these are known. A session has one
// display, whatever else it offers.
bool AreOfDifferentSessions(const HeldOffer& one, const HeldOffer& other);

}  // namespace platform
