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

// Everything that the picture depends on.
struct Kind {
  int side;
  double ratio;
  bool isTicked;
  bool isEnabled;
  qint64 colours;
  const QStyle* style;

  bool operator==(const Kind&) const = default;
};

struct KnownBox {
  Kind kind;
  QImage image;
};

// Ticked and not, of the sizes that are shown at a time.
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
  // A style draws one in some microseconds, and a window may show hundreds of them.
  static auto& known = *new std::list<KnownBox>;
  const Kind kind{side,
                  ratio,
                  look.isTicked,
                  look.isEnabled,
                  QApplication::palette().cacheKey(),
                  QApplication::style()};
  const auto found =
      std::ranges::find_if(known, [&](const KnownBox& each) { return each.kind == kind; });
  if (found != known.end()) return found->image;
  if (known.size() == kMostBoxes) known.pop_back();
  known.push_front({kind, Draw(kind)});
  return known.front().image;
}

}  // namespace platform
