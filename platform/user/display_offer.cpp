#include "platform/user/display_offer.h"

#include <algorithm>
#include <ranges>

#include "platform/kernel/encoding.h"

namespace platform {
namespace {

constexpr char kSeparator = '\0';

bool IsNumber(std::string_view text) {
  constexpr std::size_t kMostDigits = 5;
  return !text.empty() && text.size() <= kMostDigits &&
         std::ranges::all_of(text, [](char each) { return each >= '0' && each <= '9'; });
}

}  // namespace

bool IsLocalDisplay(std::string_view display) {
  if (!display.starts_with(':')) return false;
  display.remove_prefix(1);
  const std::size_t point = display.find('.');
  return IsNumber(display.substr(0, point)) &&
         (point == display.npos || IsNumber(display.substr(point + 1)));
}

std::string EncodeOffer(const DisplayOffer& offer) {
  return offer.display + kSeparator + Utf8(offer.session);
}

std::optional<DisplayOffer> DecodeOffer(std::string_view message) {
  const std::size_t end = message.find(kSeparator);
  if (end == message.npos || !IsLocalDisplay(message.substr(0, end))) return std::nullopt;
  return DisplayOffer{std::string(message.substr(0, end)), Wide(message.substr(end + 1))};
}

const HeldOffer* ChooseOffer(std::span<const HeldOffer> offers, const SeatState& seat) {
  const SeatSession* const active = seat.Active();
  const auto isTaken = [&](const HeldOffer& each) {
    if (active == nullptr) return each.account == kRootAccount;
    const std::wstring& session = each.offer.session;
    return each.account == active->user && (session.empty() || session == active->id);
  };
  for (const HeldOffer& each : std::views::reverse(offers)) {
    if (isTaken(each)) return &each;
  }
  return nullptr;
}

bool AreOfDifferentSessions(const HeldOffer& one, const HeldOffer& other) {
  const bool areKnown = !one.offer.session.empty() && !other.offer.session.empty();
  return one.account != other.account || (areKnown && one.offer.session != other.offer.session);
}

}  // namespace platform
