// The table behind every handle kind of the layer. A handle is a number made of a slot and that
// slot's generation, so a stale or foreign handle is recognised without accessing the object.
// Handles are multiples of four, never null and never INVALID_HANDLE_VALUE. One table per process;
// every function may be called from any thread.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace platform {

enum class HandleKind : std::uint8_t {
  kThread,
  kMutex,
  kDevice,
  kModule,
  kGlobalMemory,
  kRegistryKey,
  kServiceManager,
  kService,
  kServiceStatus,
  kEventSource,
  kWindow,
  kMenu,
  kDeviceContext,
  kFont,
  kBrush,
  kPen,
  kBitmap,
  kIcon,
  kCursor,
  kPropertyPage,
  kGdiplusGraphics,
  kGdiplusFontFamily,
  kGdiplusFont,
  kGdiplusBrush,
};

// The object of a handle. It is reference-counted: when one thread closes the handle, the object
// stays alive for another thread that uses it.
class Object {
 public:
  virtual ~Object() = default;
};

class HandleTable {
 public:
  // A new handle for the object.
  void* Insert(HandleKind kind, std::shared_ptr<Object> object);

  // The object of a live handle of this kind; null when it is stale, foreign or of another kind.
  std::shared_ptr<Object> Find(HandleKind kind, const void* handle) const;

  // The object of a live handle of any kind, and that kind; null when it is stale or foreign.
  std::shared_ptr<Object> FindAny(const void* handle, HandleKind& kind) const;

  // Closes the handle and returns its object; null as in Find.
  std::shared_ptr<Object> Remove(HandleKind kind, const void* handle);

  // Whether the handle is live, and then its kind.
  bool KindOf(const void* handle, HandleKind& kind) const;

  // The number of live handles, for tests that look for leaks.
  std::size_t Count() const;

 private:
  struct Slot {
    std::shared_ptr<Object> object;
    std::uint32_t generation = 1;
    HandleKind kind{};
  };
  const Slot* Locate(const void* handle) const;

  mutable std::mutex mutex_;
  std::vector<Slot> slots_;
  std::vector<std::uint32_t> freeSlots_;
};

HandleTable& Handles();

// The object of a handle, cast to its type; null as in Find. Each kind has exactly one object type.
template <class T>
std::shared_ptr<T> Resolve(HandleKind kind, const void* handle) {
  return std::static_pointer_cast<T>(Handles().Find(kind, handle));
}

}  // namespace platform
