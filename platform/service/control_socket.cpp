#include "platform/service/control_socket.h"

#include <fcntl.h>

#include <filesystem>
#include <string>

#include "platform/service/service_files.h"

namespace platform {
namespace {

std::filesystem::path SocketPath(std::wstring_view serviceName) {
  return ServiceFilePath(serviceName, ServiceFile::kSocket);
}

}  // namespace

ControlSocketAddress::ControlSocketAddress(std::wstring_view serviceName)
    : folder_(
          ::open(SocketPath(serviceName).parent_path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)),
      address_("/proc/self/fd/" + std::to_string(folder_.Get()) + '/' +
               SocketPath(serviceName).filename().native()) {}

}  // namespace platform
