#include "settings/user_rights.h"

namespace quillgate {
namespace {

MessageId PasswordHintFor(const ShownUser& shown) {
  if (shown.system == LogonSystem::kNone) return kMsgChangeOverridePassword;
  return shown.isForAdministrator ? kMsgChangeUsersPassword : kMsgChangeOwnPassword;
}

}  // namespace

UserRights RightsOver(const ShownUser& shown) {
  const bool isNone = shown.system == LogonSystem::kNone;
  const bool isWindows = shown.system == LogonSystem::kWindows;
  UserRights rights;
  // Accounts and passwords belong to Windows there, and the two users of NONE are fixed.
  rights.mayAdd = shown.isForAdministrator && !isNone;
  rights.mayRemove = shown.isForAdministrator && !isNone && !isWindows && shown.isAny;
  rights.hasPassword = !isWindows && shown.isAny && (!isNone || shown.isOverride);
  rights.mayChangePassword = rights.hasPassword && (shown.isForAdministrator || !isNone);
  rights.mayChangeRules = shown.isForAdministrator && shown.isAny;
  rights.mayChangeAdministrator = rights.mayChangeRules && !isNone && !shown.isLastAdministrator;
  rights.passwordHint = PasswordHintFor(shown);
  rights.hoursHint = isNone ? kMsgChangeCommonHours : kMsgChangeUsersHours;
  return rights;
}

bool StartsAsAdministrator(LogonSystem system, bool hasAdministrator) {
  return system == LogonSystem::kQuillgate && !hasAdministrator;
}

}  // namespace quillgate
