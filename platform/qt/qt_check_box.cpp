#include "platform/qt/qt_check_box.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <algorithm>
#include <cmath>
#include <list>

namespace platform {
namespace {

// All parameters that determine the image.
struct Kind {
  int side;
  double ratio;
  bool isTicked;
  bool isEnabled;
  qint64 colours;
  const QStyle* style;

  bool operator==(const Kind&) const = default;
};

struct CachedBox {
  Kind kind;
  QImage image;
};

// Ticked and unticked boxes of the sizes that are shown at the same time.
constexpr std::size_t kMostBoxes = 8;

QImage Draw(const Kind& kind) {
  const int pixels = std::max(1, static_cast<int>(std::ceil(kind.side * kind.ratio)));
  QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(kind.ratio);
  image.fill(Qt::transparent);
  QStyleOptionButton option;
  option.rect = QRect(0, 0, kind.side, kind.side);
  option.palette = QApplication::palette();
  option.palette.setCurrentColorGroup(kind.isEnabled ? QPalette::Active : QPalette::Disabled);
  option.state = kind.isTicked ? QStyle::State_On : QStyle::State_Off;
  if (kind.isEnabled) option.state |= QStyle::State_Enabled | QStyle::State_Active;
  QPainter painter(&image);
  kind.style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter);
  return image;
}

}  // namespace

QImage CheckBoxImage(int side, double ratio, const CheckBoxLook& look) {
  // Cached: a style takes some microseconds to draw a box, and a window may show hundreds of them.
  static auto& cache = *new std::list<CachedBox>;
  const Kind kind{side,
                  ratio,
                  look.isTicked,
                  look.isEnabled,
                  QApplication::palette().cacheKey(),
                  QApplication::style()};
  const auto found =
      std::ranges::find_if(cache, [&](const CachedBox& each) { return each.kind == kind; });
  if (found != cache.end()) return found->image;
  if (cache.size() == kMostBoxes) cache.pop_back();
  cache.push_front({kind, Draw(kind)});
  return cache.front().image;
}

}  // namespace platform
