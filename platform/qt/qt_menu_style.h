// The style of one popup menu. Owner-drawn items are measured and drawn by the owner, all others by
// the desktop's style. Lives on the window thread, at least as long as its menus.
#pragma once

#include <QAction>
#include <QProxyStyle>
#include <QStyleOptionMenuItem>
#include <map>

#include "platform/user/menu_backend.h"

namespace platform {

class QtMenuStyle final : public QProxyStyle {
 public:
  explicit QtMenuStyle(MenuEvents& events);

  // The owner is not called any more.
  void Detach() { events_ = nullptr; }

  static void Attach(QAction& action, const TrackedItem& item);
  static const TrackedItem& ItemOf(const QAction& action);
  // Marks the option as that of an owner-drawn item.
  static void MarkOwnerDrawn(QStyleOptionMenuItem& option, const QAction& action);

  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;

 private:
  QSize Measure(const TrackedItem& item) const;
  UINT ActionFor(const TrackedItem& item, bool selected) const;
  void Draw(const TrackedItem& item, const QStyleOption& option, QPainter& painter) const;
  void DrawArrow(const QStyleOption& option, QPainter& painter, const QWidget* widget) const;

  MenuEvents* events_;
  // Each item is measured once. Whether it was last drawn as selected is remembered. Mutable
  // because the style's own functions are const.
  mutable std::map<const TrackedItem*, QSize> sizes_;
  mutable std::map<const TrackedItem*, bool> drawnSelected_;
};

}  // namespace platform
