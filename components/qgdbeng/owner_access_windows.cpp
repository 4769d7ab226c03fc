#include "owner_access_windows.h"

#include <aclapi.h>

#include <system_error>

#include "owned_file.h"
#include "system_handle_windows.h"

namespace quillgate::engine {

namespace {

void Require(BOOL done) {
  if (done != FALSE) return;
  const auto error = static_cast<int>(::GetLastError());
  throw OpenError("files cannot be kept from others: " + std::system_category().message(error));
}

}  // namespace

OwnerAccess& OwnerAccess::OfProcess() {
  static OwnerAccess access;
  return access;
}

OwnerAccess::OwnerAccess() {
  FindOwner();
  MakeList();
}

void OwnerAccess::FindOwner() {
  DWORD bytes = sizeof(owner_);
  Require(::CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, Owner(), &bytes));
  // False for an administrator whose process is not elevated.
  BOOL administrates = FALSE;
  Require(::CheckTokenMembership(nullptr, Owner(), &administrates));
  if (administrates == FALSE) TakeUserAsOwner();
}

void OwnerAccess::TakeUserAsOwner() {
  HANDLE opened = nullptr;
  Require(::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &opened));
  const SystemHandle token(opened);
  union {
    TOKEN_USER read;
    std::array<BYTE, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> bytes;
  } user{};
  DWORD bytes = 0;
  Require(::GetTokenInformation(opened, TokenUser, &user, sizeof(user), &bytes));
  Require(::CopySid(sizeof(owner_), Owner(), user.read.User.Sid));
}

void OwnerAccess::MakeList() {
  Require(::InitializeAcl(List(), sizeof(list_), ACL_REVISION));
  Require(::AddAccessAllowedAce(List(), ACL_REVISION, FILE_ALL_ACCESS, Owner()));
  Require(::InitializeSecurityDescriptor(&descriptor_, SECURITY_DESCRIPTOR_REVISION));
  Require(::SetSecurityDescriptorOwner(&descriptor_, Owner(), FALSE));
  Require(::SetSecurityDescriptorDacl(&descriptor_, TRUE, List(), FALSE));
  // Without this flag the folder's inheritable entries are added.
  Require(::SetSecurityDescriptorControl(&descriptor_, SE_DACL_PROTECTED, SE_DACL_PROTECTED));
}

SECURITY_ATTRIBUTES OwnerAccess::ForNewFile() {
  return {sizeof(SECURITY_ATTRIBUTES), &descriptor_, FALSE};
}

DWORD OwnerAccess::ApplyTo(HANDLE file) {
  constexpr DWORD kWhat = DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION;
  return ::SetSecurityInfo(file, SE_FILE_OBJECT, kWhat, nullptr, nullptr, List(), nullptr);
}

bool OwnerAccess::IsOwner(PSID owner) {
  return ::EqualSid(owner, Owner()) != FALSE;
}

}  // namespace quillgate::engine
