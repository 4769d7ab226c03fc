#include "session/session_meter.h"

#include <utility>

namespace quillgate {
namespace {

constexpr std::uint32_t kMillisecondsPerSecond = 1000;
// Whole seconds until the tick count wraps.
constexpr std::uint32_t kSecondsPerTickTurn = 4294967;

std::uint64_t CountedSince(std::uint32_t start, std::uint64_t counter) {
  return counter > start ? counter - start : 0;
}

}  // namespace

void SessionMeter::SetAdapter(std::unique_ptr<NetworkAdapter> adapter) {
  adapter_ = std::move(adapter);
}

void SessionMeter::SetAdapterName(std::wstring serviceName) {
  if (adapter_ == nullptr || adapter_->ServiceName() == serviceName) return;
  carriedSent_ = BytesSent();
  carriedReceived_ = BytesReceived();
  adapter_->SetServiceName(std::move(serviceName));
  start_ = adapter_->MoveOrigin();
}

void SessionMeter::NoteCounters() {
  carriedSent_ = carriedReceived_ = 0;
  start_ = adapter_ == nullptr ? NetworkAdapter::Start{} : adapter_->MoveOrigin();
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

OnlineTime SessionMeter::TimeOnline() const {
  if (!IsMeasuring()) return {};
  const DWORD now = ::GetTickCount();
  const DWORD elapsed = now >= startTick_ ? now - startTick_ : now;
  const std::uint32_t seconds = elapsed / kMillisecondsPerSecond;
  return {now >= startTick_ ? seconds : seconds + kSecondsPerTickTurn,
          elapsed % kMillisecondsPerSecond};
}

std::uint64_t SessionMeter::BytesReceived() const {
  if (adapter_ == nullptr || !IsMeasuring()) return 0;
  return carriedReceived_ + CountedSince(start_.bytesReceived, adapter_->BytesReceived());
}

std::uint64_t SessionMeter::BytesSent() const {
  if (adapter_ == nullptr || !IsMeasuring()) return 0;
  return carriedSent_ + CountedSince(start_.bytesSent, adapter_->BytesSent());
}

SessionRecord SessionMeter::Record(const std::wstring& user) const {
  const OnlineTime time = TimeOnline();
  return {user, time.seconds, BytesSent(), BytesReceived(), startDate_, time.restMilliseconds};
}

}  // namespace quillgate
