#include "platform/kernel/api_result.h"

#include <exception>
#include <new>

#include "platform/kernel/log.h"

namespace platform {

DWORD ErrorOfException() noexcept {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return ERROR_NOT_ENOUGH_MEMORY;
  } catch (const std::exception& error) {
    LogLine(error.what());
    return ERROR_GEN_FAILURE;
  } catch (...) {
    return ERROR_GEN_FAILURE;
  }
}

}  // namespace platform
