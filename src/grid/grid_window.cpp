#include "grid/grid_window.h"

#include <array>

#include "grid/grid_fonts.h"
#include "grid/grid_messages.h"
#include "grid/grid_routes.h"
#include "grid/slot_table.h"

namespace quillgate {
namespace {

// State that the grids of the process share.
struct GridProcess {
  SlotTable slots;
  // The window that holds each slot. A second window with the same identifier receives messages
  // too, while it is created and destroyed, and must not reach the first one's slot.
  std::array<HWND, SlotTable::kSlots> windows{};
  GridFonts fonts;
};

// Never destroyed: at process exit, the system that deletes fonts may be gone already.
GridProcess& Process() {
  static GridProcess& process = *new GridProcess;
  return process;
}

std::uint32_t IdentifierOf(HWND window) {
  return static_cast<std::uint32_t>(::GetDlgCtrlID(window));
}

HWND& HolderOf(const GridSlot& slot) {
  return Process().windows[Process().slots.NumberOf(slot)];
}

GridSlot* SlotOf(HWND window) {
  GridSlot* slot = Process().slots.Find(IdentifierOf(window));
  return slot != nullptr && HolderOf(*slot) == window ? slot : nullptr;
}

WindowGridSystem SystemOf(HWND window, const GridSlot& slot) {
  const SlotTable& slots = Process().slots;
  return {window, slot.controlId, slots.NumberOf(slot), slots.GenerationOf(slot)};
}

// False when the identifier is in use or all slots are taken.
bool Create(HWND window, const CREATESTRUCTW& creation) {
  GridProcess& process = Process();
  GridSlot* slot = process.slots.Take(IdentifierOf(window));
  if (slot == nullptr) return false;
  HolderOf(*slot) = window;
  if (process.slots.InUse() == 1) process.fonts.Make();
  process.fonts.GiveTo(*slot);
  const wchar_t* title = creation.lpszName != nullptr ? creation.lpszName : L"";
  ::SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(title));
  WindowGridSystem system = SystemOf(window, *slot);
  GridScrolling(*slot, system).UpdateBars();
  return true;
}

void Destroy(GridSlot& slot) {
  GridProcess& process = Process();
  HolderOf(slot) = nullptr;
  process.slots.Release(slot);
  if (process.slots.InUse() == 0) process.fonts.Delete();
}

LRESULT HandleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  // The system destroys the window when WM_CREATE returns -1.
  if (message == WM_CREATE)
    return Create(window, *reinterpret_cast<const CREATESTRUCTW*>(lParam)) ? 0 : -1;
  GridSlot* slot = SlotOf(window);
  if (slot != nullptr && message == WM_DESTROY) {
    Destroy(*slot);
    return 0;
  }
  const GridRoute route = slot != nullptr ? RouteOf(message) : nullptr;
  if (route == nullptr) return ::DefWindowProcW(window, message, wParam, lParam);
  WindowGridSystem system = SystemOf(window, *slot);
  Grid grid(*slot, system);
  return route({window, wParam, lParam, *slot, system, grid});
}

LRESULT CALLBACK GridProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  try {
    return HandleMessage(window, message, wParam, lParam);
  } catch (...) {
    return message == WM_CREATE ? -1 : 0;
  }
}

}  // namespace

bool RegisterGridClass(HINSTANCE instance) {
  Process().slots.Initialise();
  Process().windows = {};
  WNDCLASSW windowClass{};
  windowClass.style = CS_HREDRAW | CS_VREDRAW;
  windowClass.lpfnWndProc = GridProcedure;
  windowClass.hInstance = instance;
  windowClass.hbrBackground = static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH));
  windowClass.lpszClassName = kGridClassName;
  if (::RegisterClassW(&windowClass) != 0) return true;
  return ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace quillgate
