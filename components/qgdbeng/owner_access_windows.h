// The access list of the database's files on Windows: their owner only. With administrator rights
// the owner is the Administrators group. It includes LocalSystem, so the service and an
// administrator who installs or removes it open the same file, as root does both on Linux. Without
// these rights the owner is the process's user. There is one instance per process, never changed.
// Any thread.
#pragma once

#include <windows.h>

#include <array>

namespace quillgate::engine {

class OwnerAccess {
 public:
  // Throws OpenError when the process's user cannot be determined.
  static OwnerAccess& OfProcess();

  OwnerAccess(const OwnerAccess&) = delete;
  OwnerAccess& operator=(const OwnerAccess&) = delete;

  // The attributes of a new file: an access list with its owner only, which inherits nothing.
  SECURITY_ATTRIBUTES ForNewFile();

  // Sets that list on an existing file. The handle needs WRITE_DAC. Returns 0 or an error code.
  DWORD ApplyTo(HANDLE file);

  // Whether this is the owner of new files.
  bool IsOwner(PSID owner);

 private:
  OwnerAccess();
  void FindOwner();
  void TakeUserAsOwner();
  void MakeList();

  PSID Owner() { return owner_.data(); }
  ACL* List() { return &list_.header; }

  alignas(SID) std::array<BYTE, SECURITY_MAX_SID_SIZE> owner_{};
  union {
    ACL header;
    std::array<BYTE, sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) + SECURITY_MAX_SID_SIZE> bytes;
  } list_{};
  SECURITY_DESCRIPTOR descriptor_{};
};

}  // namespace quillgate::engine
