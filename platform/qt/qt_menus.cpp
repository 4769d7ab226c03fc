#include "platform/qt/qt_menus.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <QPointer>
#include <algorithm>

#include "platform/qt/qt_desktop_loss.h"
#include "platform/qt/qt_menu_style.h"
#include "platform/qt/qt_peer.h"

namespace platform {
namespace {

bool HasMnemonic(const QAction* action) {
  return !QKeySequence::mnemonic(action->text()).isEmpty();
}

bool BeginsWith(const QAction* action, const QString& letter) {
  return action->isEnabled() && !action->isSeparator() &&
         action->text().startsWith(letter, Qt::CaseInsensitive);
}

class PopupMenu final : public QMenu {
 public:
  PopupMenu(const std::vector<TrackedItem>& items, QtMenuStyle& style, QWidget* parent)
      : QMenu(parent) {
    setStyle(&style);
    for (const TrackedItem& item : items)
      AddItem(item, style);
  }

 private:
  void AddItem(const TrackedItem& item, QtMenuStyle& style) {
    QAction* action = AddAction(item, style);
    QtMenuStyle::Attach(*action, item);
    action->setEnabled(item.isEnabled);
    action->setCheckable(item.isChecked);
    action->setChecked(item.isChecked);
    if (item.isDefault) setDefaultAction(action);
  }

  QAction* AddAction(const TrackedItem& item, QtMenuStyle& style) {
    if (item.isSeparator) return addSeparator();
    const QString text = QString::fromStdWString(item.text);
    if (!item.opensSubmenu) return addAction(text);
    auto* submenu = new PopupMenu(item.submenu, style, this);
    submenu->setTitle(text);
    return addMenu(submenu);
  }

  // In a menu without mnemonics a letter chooses the item that begins with it. When several do, it
  // selects the next one.
  void keyPressEvent(QKeyEvent* event) override {
    const QString letter = event->text();
    const bool isLetter = letter.size() == 1 && letter[0].isLetterOrNumber();
    if (!isLetter || std::ranges::any_of(actions(), HasMnemonic) || !ChooseByLetter(letter)) {
      QMenu::keyPressEvent(event);
    }
  }

  bool ChooseByLetter(const QString& letter) {
    QList<QAction*> candidates = actions();
    const auto others = std::ranges::remove_if(
        candidates, [&](const QAction* each) { return !BeginsWith(each, letter); });
    candidates.erase(others.begin(), others.end());
    if (candidates.isEmpty()) return false;
    const qsizetype current = candidates.indexOf(activeAction());
    setActiveAction(candidates[(current + 1) % candidates.size()]);
    if (candidates.size() > 1) return true;
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QMenu::keyPressEvent(&enter);
    return true;
  }

  void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override {
    QMenu::initStyleOption(option, action);
    const TrackedItem& item = QtMenuStyle::ItemOf(*action);
    if (item.isOwnerDrawn && !item.isSeparator) QtMenuStyle::MarkOwnerDrawn(*option, *action);
  }
};

// Returns the upper left corner of the menu, aligned to its position by the flags.
QPoint AlignedPosition(const TrackedMenu& menu, QSize size) {
  QPoint position(menu.place.x, menu.place.y);
  if ((menu.flags & TPM_CENTERALIGN) != 0) position.rx() -= size.width() / 2;
  if ((menu.flags & TPM_RIGHTALIGN) != 0) position.rx() -= size.width();
  if ((menu.flags & TPM_VCENTERALIGN) != 0) position.ry() -= size.height() / 2;
  if ((menu.flags & TPM_BOTTOMALIGN) != 0) position.ry() -= size.height();
  return position;
}

class QtShownMenu final : public ShownMenu {
 public:
  QtShownMenu(const TrackedMenu& menu, MenuEvents& events)
      : style_(new QtMenuStyle(events)), menu_(new PopupMenu(menu.items, *style_, nullptr)) {
    // The menus use their style until they are destroyed.
    QObject::connect(menu_, &QObject::destroyed, [style = style_] { delete style; });
    QObject::connect(menu_, &QMenu::triggered, &connections_, [&events](QAction* action) {
      events.OnClosed(QtMenuStyle::ItemOf(*action).command);
    });
    // Qt hides a menu before it reports the chosen item, so the hiding is handled later.
    QObject::connect(
        menu_, &QMenu::aboutToHide, &connections_, [&events] { events.OnClosed(0); },
        Qt::QueuedConnection);
    SurvivesUse([&] { menu_->popup(AlignedPosition(menu, menu_->sizeHint())); });
  }

  ~QtShownMenu() override {
    style_->Detach();
    RetireWidget(menu_);
  }
  QtShownMenu(const QtShownMenu&) = delete;
  QtShownMenu& operator=(const QtShownMenu&) = delete;

 private:
  QtMenuStyle* const style_;
  const QPointer<QMenu> menu_;
  QObject connections_;
};

}  // namespace

std::unique_ptr<ShownMenu> QtMenus::Show(const TrackedMenu& menu, MenuEvents& events) {
  return std::make_unique<QtShownMenu>(menu, events);
}

}  // namespace platform
