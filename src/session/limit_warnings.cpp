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

void LimitWarnings::WarnIfDue(const User& user, const AccessRules& rules) {
  if (!timeWarningShown_ && user.TimeLimit().enabled) WarnOfTime(rules.TimeLeft());
  if (!downloadWarningShown_ && user.DownloadLimit().enabled) WarnOfDownload(rules.BytesLeft());
}

void LimitWarnings::WarnOfTime(std::uint64_t secondsLeft) {
  if (settings_.GetSetting(SettingKey::kTimeWarnings, kYes) != kYes) return;
  const std::uint64_t minutes =
      SettingNumber(settings_.GetSetting(SettingKey::kTimeWarningMinutes, L"10"));
  if (secondsLeft >= minutes * kSecondsPerMinute) return;
  const auto minutesLeft = static_cast<unsigned>(secondsLeft / kSecondsPerMinute + 1);
  indicator_.ShowMessage(catalogue_.GetMessageText(kMsgMinutesLeft, minutesLeft), Title(),
                         BalloonIcon::kWarning, 0);
  timeWarningShown_ = true;
}

void LimitWarnings::WarnOfDownload(std::uint64_t bytesLeft) {
  if (settings_.GetSetting(SettingKey::kDownloadWarnings, kNo) != kYes) return;
  // The threshold wraps at 32 bits: 4096 megabytes are none.
  const std::uint32_t threshold =
      SettingNumber(settings_.GetSetting(SettingKey::kDownloadWarningMegabytes, L"0")) *
      kBytesPerMegabyte;
  if (bytesLeft >= threshold) return;
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
