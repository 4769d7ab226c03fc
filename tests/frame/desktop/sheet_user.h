// The user in a property sheet or wizard: its current page's controls by their numbers. All calls
// are made by the script.
#pragma once

#include <windows.h>

#include <prsht.h>

#include <QComboBox>
#include <QLineEdit>
#include <functional>

#include "desktop/dialog_driver.h"

namespace quillgate {

// The buttons of a wizard.
constexpr int kBack = 0x3023;
constexpr int kNext = 0x3024;
constexpr int kFinish = 0x3025;

class SheetUser {
 public:
  SheetUser(DesktopScript& running, QWidget* window) : script(running), sheet(window) {}

  void Turn(int pages) {
    for (int i = 0; i < pages; ++i)
      script.Key(Qt::Key_Tab, Qt::ControlModifier);
  }
  QWidget* Page() {
    const HWND window = script.HandleOf(sheet);
    QWidget* page = nullptr;
    script.Do([&] {
      const auto current = reinterpret_cast<UINT_PTR>(PropSheet_GetCurrentPageHwnd(window));
      for (QWidget* each : sheet->findChildren<QWidget*>()) {
        if (each->property("windowHandle").toULongLong() == current) page = each;
      }
    });
    return page;
  }
  template <class Widget = QWidget>
  Widget* Get(int id) {
    return qobject_cast<Widget*>(script.Child(Page(), id));
  }
  bool IsEnabled(int id) {
    bool isEnabled = false;
    QWidget* widget = Get(id);
    script.Do([&] { isEnabled = widget->isEnabled(); });
    return isEnabled;
  }
  void Click(int id) { script.Click(Get(id)); }
  void Enter(int id, const QString& text) {
    auto* field = Get<QLineEdit>(id);
    script.Do([&] {
      field->setFocus();
      field->selectAll();
    });
    script.Type(field, text);
  }
  void Choose(int id, int index) {
    auto* list = Get<QComboBox>(id);
    script.Do([&] {
      list->setCurrentIndex(index);
      emit list->activated(index);
    });
  }
  void AwaitFocus(int id) {
    auto* field = Get<QLineEdit>(id);
    script.Await([&] { return field->hasFocus() && field->hasSelectedText(); }, "focus");
  }
  void AwaitChosen(int id, const QString& text) {
    auto* list = Get<QComboBox>(id);
    script.Await([&] { return list->currentText() == text; }, text);
  }
  QString Text(int id) { return script.TextOf(Get(id)); }
  // A button of the sheet itself.
  void Press(int button) { script.Click(sheet, button); }

  // --- in a wizard ---
  void AwaitReady(int button) {
    const QWidget* widget = script.Child(sheet, button);
    script.Await([&] { return widget->isVisible() && widget->isEnabled(); }, "button");
  }
  // What turns the page.
  void Go(const std::function<void()>& act) {
    const HWND window = script.HandleOf(sheet);
    HWND before = nullptr;
    script.Do([&] { before = PropSheet_GetCurrentPageHwnd(window); });
    act();
    script.Await([&] { return PropSheet_GetCurrentPageHwnd(window) != before; }, "other page");
  }
  void Go(int button) {
    AwaitReady(button);
    Go([&] { Press(button); });
  }

  DesktopScript& script;
  QWidget* sheet;
};

}  // namespace quillgate
