// Who may use the database's files on Windows: their owner and nobody else. A process with the
// rights of the administrators makes them the administrators' group's: it takes in LocalSystem, so
// the service and an administrator who installs or removes it open the same file, as root does both
// on Linux. Any other process makes them its user's. One for the process, never changed: any
// thread.
#pragma once

#include <windows.h>

#include <array>

namespace quillgate::engine {

class OwnerAccess {
 public:
  // Throws OpenError when the process's user cannot be told.
  static OwnerAccess& OfProcess();

  OwnerAccess(const OwnerAccess&) = delete;
  OwnerAccess& operator=(const OwnerAccess&) = delete;

  // For a new file: with its owner alone on its list, which inherits nothing.
  SECURITY_ATTRIBUTES ForNewFile();

  // Gives a file that exists that list, through a handle with WRITE_DAC: 0 or an error code.
  DWORD ApplyTo(HANDLE file);

  // Whether this is the owner that new files get.
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
