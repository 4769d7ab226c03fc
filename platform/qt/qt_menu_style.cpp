#include "platform/qt/qt_menu_style.h"

#include <QApplication>
#include <QPainter>
#include <QStyleFactory>
#include <algorithm>

#include "platform/qt/qt_canvas.h"
#include "platform/qt/qt_peer.h"

namespace platform {
namespace {

// The width for a check mark or the arrow of a submenu, added to the size that the owner returns.
constexpr int kCheckColumn = 15;

// The item when it is owner-drawn; null for all others.
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

QtMenuStyle::QtMenuStyle(MenuEvents& events)
    : QProxyStyle(QStyleFactory::create(QApplication::style()->name())), events_(&events) {}

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
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (type != CT_MenuItem || item == nullptr) {
    return QProxyStyle::sizeFromContents(type, option, size, widget);
  }
  if (const TrackedItem* own = OwnerDrawnItem(option)) return Measure(*own);
  QSize wanted = QProxyStyle::sizeFromContents(type, option, size, widget);
  // Only the texts determine the width of a menu.
  if (item->menuItemType == QStyleOptionMenuItem::Separator) wanted.setWidth(1);
  return wanted;
}

QSize QtMenuStyle::Measure(const TrackedItem& item) const {
  const auto cached = sizes_.find(&item);
  if (cached != sizes_.end()) return cached->second;
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

// Always includes ODA_DRAWENTIRE, since the toolkit has cleared the background.
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

// Owners fill their items with the system's menu colour, so the whole menu is filled with it, too.
void QtMenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
  if (element == PE_PanelMenu) {
    painter->fillRect(option->rect, option->palette.window());
  } else {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

// Owners fill their items to the edge and would paint over a frame without a width of its own.
int QtMenuStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                             const QWidget* widget) const {
  const int length = QProxyStyle::pixelMetric(metric, option, widget);
  return metric == PM_MenuPanelWidth ? std::max(length, 1) : length;
}

}  // namespace platform
