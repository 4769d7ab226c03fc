// The caret of a window: a rectangle that inverts what the window shows, and then does not, by
// turns. Used on the window thread.
#pragma once

#include <QImage>
#include <QPainter>
#include <QTimer>
#include <QWidget>
#include <optional>

namespace platform {

class QtCaret {
 public:
  explicit QtCaret(QWidget& window);

  // It shows at once; nothing: there is none.
  void Set(const std::optional<QRect>& place);
  // Over what the window shows, which these are the pixels of.
  void Paint(QPainter& painter, const QImage& shown) const;

 private:
  void Blink();
  void Update();

  QWidget& window_;
  QTimer timer_;
  std::optional<QRect> place_;
  bool isLit_ = false;
};

}  // namespace platform
