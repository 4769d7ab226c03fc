// The user in a property sheet or wizard: its current page's controls by their numbers. All calls are
// made by the script.
#pragma once

#include <windows.h>

#include <prsht.h>

#include <QComboBox>
#include <QLineEdit>

#include "desktop/dialog_driver.h"

namespace quillgate {

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

  DesktopScript& script;
  QWidget* sheet;
};

}  // namespace quillgate
