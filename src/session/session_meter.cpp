#include "session/session_meter.h"

#include <utility>

namespace quillgate {
namespace {

constexpr std::uint32_t kMillisecondsPerSecond = 1000;
// The whole seconds of a tick count's full turn.
constexpr std::uint32_t kSecondsPerTickTurn = 4294967;

std::uint64_t CountedSince(std::uint32_t start, std::uint64_t counter) {
  return counter > start ? counter - start : 0;
}

}  // namespace

void SessionMeter::SetAdapter(std::unique_ptr<NetworkAdapter> adapter) {
  adapter_ = std::move(adapter);
}

void SessionMeter::SetAdapterName(std::wstring serviceName) {
  if (adapter_ != nullptr) adapter_->SetServiceName(std::move(serviceName));
}

void SessionMeter::NoteCounters() {
  bytesSentAtStart_ = 0;
  bytesReceivedAtStart_ = 0;
  if (adapter_ == nullptr) return;
  bytesSentAtStart_ = static_cast<std::uint32_t>(adapter_->BytesSent());
  bytesReceivedAtStart_ = static_cast<std::uint32_t>(adapter_->BytesReceived());
}

void SessionMeter::NoteTime() {
  online_ = true;
  startDate_ = LocalNow();
  startTick_ = ::GetTickCount();
}

void SessionMeter::End() {
  online_ = false;
  startTick_ = 0;
}

bool SessionMeter::IsMeasuring() const {
  return online_ && logon_.IsLoggedOn();
}

std::uint32_t SessionMeter::SecondsOnline() const {
  if (!IsMeasuring()) return 0;
  const DWORD now = ::GetTickCount();
  if (now >= startTick_) return (now - startTick_) / kMillisecondsPerSecond;
  return now / kMillisecondsPerSecond + kSecondsPerTickTurn;
}

std::uint64_t SessionMeter::BytesReceived() const {
  if (adapter_ == nullptr || !IsMeasuring()) return 0;
  return CountedSince(bytesReceivedAtStart_, adapter_->BytesReceived());
}

std::uint64_t SessionMeter::BytesSent() const {
  if (adapter_ == nullptr || !IsMeasuring()) return 0;
  return CountedSince(bytesSentAtStart_, adapter_->BytesSent());
}

SessionRecord SessionMeter::Record(const std::wstring& user) const {
  return {user, SecondsOnline(), BytesSent(), BytesReceived(), startDate_};
}

}  // namespace quillgate
