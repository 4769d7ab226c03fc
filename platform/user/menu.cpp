#include "platform/user/menu.h"

#include <algorithm>

#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr UINT kContents = MIIM_TYPE | MIIM_STRING | MIIM_FTYPE;
constexpr UINT kSupportedMask = MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_DATA | kContents;
constexpr UINT kSupportedTypes = MFT_OWNERDRAW | MFT_SEPARATOR;
constexpr UINT kSupportedStates = MFS_GRAYED | MFS_CHECKED | MFS_DEFAULT;

bool Fail(DWORD error) {
  ::SetLastError(error);
  return false;
}

// The position of an item in a menu or in one of its submenus.
struct ItemPosition {
  std::shared_ptr<Menu> menu;
  std::size_t index = 0;
};

std::shared_ptr<Menu> MenuOf(HMENU handle) {
  return Resolve<Menu>(HandleKind::kMenu, handle);
}

std::optional<ItemPosition> LocateCommand(const std::shared_ptr<Menu>& menu, UINT command) {
  for (std::size_t index = 0; index < menu->items.size(); ++index) {
    const MenuItem& item = menu->items[index];
    if (const auto submenu = MenuOf(item.submenu)) {
      if (auto found = LocateCommand(submenu, command)) return found;
    } else if (item.command == command) {
      return ItemPosition{menu, index};
    }
  }
  // An item that opens a submenu matches only when no item in the submenus has the number.
  const auto found = std::ranges::find(menu->items, command, &MenuItem::command);
  if (found == menu->items.end()) return std::nullopt;
  return ItemPosition{menu, static_cast<std::size_t>(found - menu->items.begin())};
}

std::optional<ItemPosition> Locate(const std::shared_ptr<Menu>& menu, UINT item, bool byPosition) {
  if (!byPosition) return LocateCommand(menu, item);
  if (item >= menu->items.size()) return std::nullopt;
  return ItemPosition{menu, item};
}

// Whether the menu is the other one or can be reached from it.
bool IsWithin(const Menu& menu, const Menu& other) {
  return &menu == &other || std::ranges::any_of(other.items, [&](const MenuItem& item) {
    const auto submenu = MenuOf(item.submenu);
    return submenu != nullptr && IsWithin(menu, *submenu);
  });
}

bool IsText(UINT type) {
  return (type & (MFT_OWNERDRAW | MFT_SEPARATOR)) == 0;
}

// MIIM_TYPE, the older way to pass contents, excludes MIIM_STRING and MIIM_FTYPE.
bool IsMaskConsistent(UINT mask) {
  return (mask & MIIM_TYPE) == 0 || (mask & (MIIM_STRING | MIIM_FTYPE)) == 0;
}

bool CheckInformation(const MENUITEMINFOW* information) {
  if (information == nullptr || information->cbSize != sizeof(MENUITEMINFOW)) {
    return Fail(ERROR_INVALID_PARAMETER);
  }
  const UINT mask = information->fMask;
  if ((mask & ~kSupportedMask) != 0) LogLine("menus: unsupported member of an item");
  const bool valid = (mask & ~kSupportedMask) == 0 && IsMaskConsistent(mask);
  return valid || Fail(ERROR_INVALID_PARAMETER);
}

bool CheckNewItem(const Menu& menu, const MENUITEMINFOW& information) {
  const bool hasType = (information.fMask & (MIIM_TYPE | MIIM_FTYPE)) != 0;
  const bool hasState = (information.fMask & MIIM_STATE) != 0;
  if ((hasType && (information.fType & ~kSupportedTypes) != 0) ||
      (hasState && (information.fState & ~kSupportedStates) != 0)) {
    LogLine("InsertMenuItemW: unsupported type or state");
    return Fail(ERROR_INVALID_PARAMETER);
  }
  if ((information.fMask & MIIM_SUBMENU) == 0 || information.hSubMenu == nullptr) return true;
  const auto submenu = FindMenu(information.hSubMenu);
  if (submenu == nullptr) return false;
  // A menu must not contain itself.
  return !IsWithin(menu, *submenu) || Fail(ERROR_INVALID_PARAMETER);
}

MenuItem NewItem(const MENUITEMINFOW& information) {
  MenuItem item;
  const UINT mask = information.fMask;
  if ((mask & (MIIM_TYPE | MIIM_FTYPE)) != 0) item.type = information.fType;
  if ((mask & MIIM_STATE) != 0) item.state = information.fState;
  if ((mask & MIIM_ID) != 0) item.command = information.wID;
  if ((mask & MIIM_SUBMENU) != 0) item.submenu = information.hSubMenu;
  if ((mask & MIIM_DATA) != 0) item.data = information.dwItemData;
  const bool hasText = (mask & MIIM_STRING) != 0 || ((mask & MIIM_TYPE) != 0 && IsText(item.type));
  if (hasText && information.dwTypeData != nullptr) item.text = information.dwTypeData;
  return item;
}

// Copies the text, cut to the caller's buffer; without a buffer only the length is returned.
void CopyText(const std::wstring& text, MENUITEMINFOW& information) {
  if (information.dwTypeData == nullptr || information.cch == 0) {
    information.cch = static_cast<UINT>(text.size());
    return;
  }
  const std::size_t copied = std::min<std::size_t>(text.size(), information.cch - 1);
  std::copy_n(text.data(), copied, information.dwTypeData);
  information.dwTypeData[copied] = L'\0';
  information.cch = static_cast<UINT>(copied);
}

void CopyInformation(const MenuItem& item, MENUITEMINFOW& information) {
  const UINT mask = information.fMask;
  if ((mask & (MIIM_TYPE | MIIM_FTYPE)) != 0) information.fType = item.type;
  if ((mask & MIIM_STATE) != 0) information.fState = item.state;
  if ((mask & MIIM_ID) != 0) information.wID = item.command;
  if ((mask & MIIM_SUBMENU) != 0) information.hSubMenu = item.submenu;
  if ((mask & MIIM_DATA) != 0) information.dwItemData = item.data;
  if ((mask & (MIIM_TYPE | MIIM_STRING)) != 0) CopyText(item.text, information);
}

TrackedItem CopyItem(HMENU menu, const MenuItem& item);

std::vector<TrackedItem> CopyItemsLocked(HMENU handle) {
  std::vector<TrackedItem> copies;
  const auto menu = MenuOf(handle);
  if (menu == nullptr) return copies;
  for (const MenuItem& item : menu->items)
    copies.push_back(CopyItem(handle, item));
  return copies;
}

TrackedItem CopyItem(HMENU menu, const MenuItem& item) {
  TrackedItem copy;
  copy.menu = menu;
  copy.command = item.command;
  copy.text = item.text;
  copy.data = item.data;
  copy.isSeparator = (item.type & MFT_SEPARATOR) != 0;
  copy.isOwnerDrawn = (item.type & MFT_OWNERDRAW) != 0;
  copy.isDefault = (item.state & MFS_DEFAULT) != 0;
  copy.isEnabled = (item.state & MFS_GRAYED) == 0;
  copy.isChecked = (item.state & MFS_CHECKED) != 0;
  copy.opensSubmenu = item.submenu != nullptr;
  copy.submenu = CopyItemsLocked(item.submenu);
  return copy;
}

void DestroySubmenus(const Menu& menu) {
  for (const MenuItem& item : menu.items) {
    const auto removed = Handles().Remove(HandleKind::kMenu, item.submenu);
    if (removed != nullptr) DestroySubmenus(static_cast<const Menu&>(*removed));
  }
}

}  // namespace

std::mutex& MenuLock() {
  static std::mutex& mutex = *new std::mutex;
  return mutex;
}

std::shared_ptr<Menu> FindMenu(HMENU handle) {
  auto menu = MenuOf(handle);
  if (menu == nullptr) ::SetLastError(ERROR_INVALID_MENU_HANDLE);
  return menu;
}

std::vector<TrackedItem> CopyItems(HMENU handle) {
  const std::lock_guard lock(MenuLock());
  return CopyItemsLocked(handle);
}

}  // namespace platform

using namespace platform;

HMENU WINAPI CreatePopupMenu() try {
  return static_cast<HMENU>(Handles().Insert(HandleKind::kMenu, std::make_shared<Menu>()));
} catch (...) {
  return FailedCall<HMENU>(nullptr);
}

BOOL WINAPI DestroyMenu(HMENU menu) try {
  const std::lock_guard lock(MenuLock());
  const auto removed = Handles().Remove(HandleKind::kMenu, menu);
  if (removed == nullptr) return Fail(ERROR_INVALID_MENU_HANDLE);
  DestroySubmenus(static_cast<const Menu&>(*removed));
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

int WINAPI GetMenuItemCount(HMENU menu) try {
  const std::lock_guard lock(MenuLock());
  const auto found = FindMenu(menu);
  return found != nullptr ? static_cast<int>(found->items.size()) : -1;
} catch (...) {
  return FailedCall(-1);
}

BOOL WINAPI InsertMenuItemW(HMENU menu, UINT item, BOOL byPosition,
                            LPCMENUITEMINFOW information) try {
  const std::lock_guard lock(MenuLock());
  const auto found = FindMenu(menu);
  if (found == nullptr || !CheckInformation(information)) return FALSE;
  if (!CheckNewItem(*found, *information)) return FALSE;
  // Inserts before the given item, else at the end.
  const auto position =
      Locate(found, item, byPosition != FALSE).value_or(ItemPosition{found, found->items.size()});
  auto& items = position.menu->items;
  items.insert(items.begin() + static_cast<std::ptrdiff_t>(position.index), NewItem(*information));
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI AppendMenuW(HMENU menu, UINT flags, UINT_PTR command, LPCWSTR text) try {
  if ((flags & ~MF_GRAYED) != 0) {
    LogLine("AppendMenuW: unsupported flags");
    return Fail(ERROR_INVALID_PARAMETER);
  }
  constexpr UINT kAfterTheOthers = static_cast<UINT>(-1);
  MENUITEMINFOW information{};
  information.cbSize = sizeof information;
  information.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_STRING;
  information.fState = (flags & MF_GRAYED) != 0 ? MFS_GRAYED : MFS_ENABLED;
  information.wID = static_cast<UINT>(command);
  information.dwTypeData = const_cast<LPWSTR>(text);
  return ::InsertMenuItemW(menu, kAfterTheOthers, TRUE, &information);
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI GetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition,
                             LPMENUITEMINFOW information) try {
  const std::lock_guard lock(MenuLock());
  const auto found = FindMenu(menu);
  if (found == nullptr || !CheckInformation(information)) return FALSE;
  const auto position = Locate(found, item, byPosition != FALSE);
  if (!position.has_value()) return Fail(ERROR_MENU_ITEM_NOT_FOUND);
  CopyInformation(position->menu->items[position->index], *information);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI SetMenuDefaultItem(HMENU menu, UINT item, UINT byPosition) try {
  constexpr UINT kNoItem = static_cast<UINT>(-1);
  const std::lock_guard lock(MenuLock());
  const auto found = FindMenu(menu);
  if (found == nullptr) return FALSE;
  for (MenuItem& each : found->items)
    each.state &= ~MFS_DEFAULT;
  if (item == kNoItem) return TRUE;
  const auto chosen = byPosition != 0 ? found->items.begin() +
                                            std::min<std::ptrdiff_t>(item, std::ssize(found->items))
                                      : std::ranges::find(found->items, item, &MenuItem::command);
  if (chosen == found->items.end()) return Fail(ERROR_MENU_ITEM_NOT_FOUND);
  chosen->state |= MFS_DEFAULT;
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}
