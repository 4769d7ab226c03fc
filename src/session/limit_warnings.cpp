#include "session/limit_warnings.h"

namespace quillgate {
namespace {

constexpr std::uint64_t kSecondsPerMinute = 60;
constexpr std::uint32_t kBytesPerMegabyte = 1'048'576;
constexpr int kMegabyteBits = 20;

}  // namespace

void LimitWarnings::Clear() {
  timeWarningShown_ = false;
  downloadWarningShown_ = false;
}

bool LimitWarnings::MayBeDue(const User& user) const {
  return (!timeWarningShown_ && user.TimeLimit().enabled) ||
         (!downloadWarningShown_ && user.DownloadLimit().enabled);
}

WarningThresholds LimitWarnings::ReadThresholds(const User& user) const {
  const auto isOn = [this](SettingKey key, std::wstring_view defaultValue) {
    return settings_.GetSetting(key, defaultValue) == kYes;
  };
  WarningThresholds thresholds;
  if (user.TimeLimit().enabled && isOn(SettingKey::kTimeWarnings, kYes)) {
    const std::uint64_t minutes =
        SettingNumber(settings_.GetSetting(SettingKey::kTimeWarningMinutes, L"10"));
    thresholds.seconds = minutes * kSecondsPerMinute;
  }
  if (user.DownloadLimit().enabled && isOn(SettingKey::kDownloadWarnings, kNo)) {
    // Wraps at 32 bits: 4096 megabytes become 0.
    thresholds.bytes =
        SettingNumber(settings_.GetSetting(SettingKey::kDownloadWarningMegabytes, L"0")) *
        kBytesPerMegabyte;
  }
  return thresholds;
}

void LimitWarnings::WarnIfDue(const User& user, const WarningThresholds& thresholds,
                              const AccessRules& rules) {
  const std::uint64_t secondsLeft = rules.TimeLeft(user);
  if (!timeWarningShown_ && user.TimeLimit().enabled && secondsLeft < thresholds.seconds) {
    WarnOfTime(secondsLeft);
  }
  const std::uint64_t bytesLeft = rules.BytesLeft(user);
  if (!downloadWarningShown_ && user.DownloadLimit().enabled && bytesLeft < thresholds.bytes) {
    WarnOfDownload(bytesLeft);
  }
}

void LimitWarnings::WarnOfTime(std::uint64_t secondsLeft) {
  const auto minutesLeft = static_cast<unsigned>(secondsLeft / kSecondsPerMinute + 1);
  indicator_.ShowMessage(catalogue_.GetMessageText(kMsgMinutesLeft, minutesLeft), Title(),
                         BalloonIcon::kWarning, 0);
  timeWarningShown_ = true;
}

void LimitWarnings::WarnOfDownload(std::uint64_t bytesLeft) {
  downloadWarningShown_ = true;
  const auto megabytesLeft = static_cast<unsigned>(bytesLeft >> kMegabyteBits);
  indicator_.ShowMessage(catalogue_.GetMessageText(kMsgMegabytesLeft, megabytesLeft), Title(),
                         BalloonIcon::kWarning, 0);
}

std::wstring LimitWarnings::Title() const {
  return catalogue_.GetMessageText(kMsgProductName) + L" - " +
         catalogue_.GetMessageText(kMsgWarning);
}

}  // namespace quillgate
