#include "platform/net/interface_source.h"

#include <atomic>

#include "platform/net/linux_interfaces.h"

namespace platform {
namespace {

std::atomic<InterfaceSource*> replacement = nullptr;

}  // namespace

InterfaceSource& CurrentInterfaces() {
  // Never destroyed: other threads may still read counters while the process ends.
  static auto& kernel = *new LinuxInterfaces;
  InterfaceSource* const source = replacement;
  return source == nullptr ? kernel : *source;
}

void SetInterfaceSource(InterfaceSource* source) {
  replacement = source;
}

}  // namespace platform
