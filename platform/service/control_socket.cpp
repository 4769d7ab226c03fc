#include "platform/service/control_socket.h"

#include <fcntl.h>

#include <algorithm>
#include <string>

#include "platform/service/service_files.h"

namespace platform {

ControlSocketAddress::ControlSocketAddress(std::wstring_view serviceName) {
  const std::filesystem::path path = ServiceFilePath(serviceName, ServiceFile::kSocket);
  folder_.Reset(::open(path.parent_path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  const std::string name =
      "/proc/self/fd/" + std::to_string(folder_.Get()) + '/' + path.filename().native();
  if (name.size() >= sizeof address_.sun_path) folder_.Reset();
  address_.sun_family = AF_UNIX;
  if (folder_.IsOpen()) std::ranges::copy(name, address_.sun_path);
}

}  // namespace platform
