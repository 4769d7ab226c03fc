// The caret of a window: a rectangle that blinks by inverting the window's pixels. Used on the
// window thread.
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

  // Moves the caret and shows it at once. Null: no caret.
  void Set(const std::optional<QRect>& bounds);
  // Paints the caret over the window. `shown` holds the pixels that the window shows.
  void Paint(QPainter& painter, const QImage& shown) const;

 private:
  void Blink();
  void Update();

  QWidget& window_;
  QTimer timer_;
  std::optional<QRect> bounds_;
  bool isLit_ = false;
};

}  // namespace platform
