#include "platform/desktop/qt_menu_style.h"

#include <QApplication>
#include <QPainter>
#include <QStyleFactory>

#include "platform/desktop/qt_canvas.h"
#include "platform/desktop/qt_peer.h"

namespace platform {
namespace {

// The room for a check mark or the arrow of a submenu, which is added to what the owner measures.
constexpr int kCheckColumn = 15;

// The item that the owner draws; null for all others.
const TrackedItem* OwnerDrawnItem(const QStyleOption* option) {
  const auto* action = qobject_cast<QAction*>(option->styleObject);
  return action != nullptr ? &QtMenuStyle::ItemOf(*action) : nullptr;
}

UINT StateOf(const TrackedItem& item, bool selected) {
  UINT state = 0;
  if (selected) state |= ODS_SELECTED;
  if (!item.isEnabled) state |= ODS_GRAYED;
  if (item.isChecked) state |= ODS_CHECKED;
  if (item.isDefault) state |= ODS_DEFAULT;
  return state;
}

bool IsSelected(const QStyleOption& option) {
  return option.state.testFlag(QStyle::State_Selected);
}

}  // namespace

QtMenuStyle::QtMenuStyle(MenuEvents& events, bool searchesByLetter)
    : QProxyStyle(QStyleFactory::create(QApplication::style()->name())),
      events_(&events),
      searchesByLetter_(searchesByLetter) {}

void QtMenuStyle::Attach(QAction& action, const TrackedItem& item) {
  action.setData(QVariant::fromValue(static_cast<const void*>(&item)));
}

const TrackedItem& QtMenuStyle::ItemOf(const QAction& action) {
  return *static_cast<const TrackedItem*>(action.data().value<const void*>());
}

void QtMenuStyle::MarkOwnerDrawn(QStyleOptionMenuItem& option, const QAction& action) {
  option.styleObject = const_cast<QAction*>(&action);
}

QSize QtMenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                    const QSize& size, const QWidget* widget) const {
  const TrackedItem* item = type == CT_MenuItem ? OwnerDrawnItem(option) : nullptr;
  if (item == nullptr) return QProxyStyle::sizeFromContents(type, option, size, widget);
  return Measure(*item);
}

QSize QtMenuStyle::Measure(const TrackedItem& item) const {
  const auto known = sizes_.find(&item);
  if (known != sizes_.end()) return known->second;
  if (events_ == nullptr) return {};
  const SIZE measured = events_->Measure(item);
  const QSize size(measured.cx + kCheckColumn, measured.cy);
  sizes_[&item] = size;
  return size;
}

void QtMenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  const TrackedItem* item = element == CE_MenuItem ? OwnerDrawnItem(option) : nullptr;
  if (item == nullptr) {
    QProxyStyle::drawControl(element, option, painter, widget);
    return;
  }
  Draw(*item, *option, *painter);
  if (item->opensSubmenu) DrawArrow(*option, *painter, widget);
}

// Everything is drawn anew each time, since the desktop has cleared what was there.
UINT QtMenuStyle::ActionFor(const TrackedItem& item, bool selected) const {
  const auto drawn = drawnSelected_.find(&item);
  const bool changed = drawn != drawnSelected_.end() && drawn->second != selected;
  drawnSelected_[&item] = selected;
  return changed ? ODA_DRAWENTIRE | ODA_SELECT : ODA_DRAWENTIRE;
}

void QtMenuStyle::Draw(const TrackedItem& item, const QStyleOption& option,
                       QPainter& painter) const {
  if (events_ == nullptr) return;
  const bool selected = IsSelected(option);
  painter.save();
  painter.setClipRect(option.rect, Qt::IntersectClip);
  QtCanvas canvas(painter);
  events_->Draw(item, ActionFor(item, selected), StateOf(item, selected), canvas,
                WinRect(option.rect));
  painter.restore();
}

void QtMenuStyle::DrawArrow(const QStyleOption& option, QPainter& painter,
                            const QWidget* widget) const {
  constexpr int kArrow = 8;
  QStyleOption arrow(option);
  arrow.styleObject = nullptr;
  const int top = option.rect.top() + (option.rect.height() - kArrow) / 2;
  const int left = option.rect.right() + 1 - (kCheckColumn + kArrow) / 2;
  arrow.rect = visualRect(option.direction, option.rect, QRect(left, top, kArrow, kArrow));
  const QColor colour =
      option.palette.color(IsSelected(option) ? QPalette::HighlightedText : QPalette::Text);
  for (const QPalette::ColorRole role :
       {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    arrow.palette.setColor(role, colour);
  }
  proxy()->drawPrimitive(PE_IndicatorArrowRight, &arrow, &painter, widget);
}

int QtMenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* returned) const {
  if (hint == SH_Menu_KeyboardSearch) return searchesByLetter_ ? 1 : 0;
  return QProxyStyle::styleHint(hint, option, widget, returned);
}

}  // namespace platform
