#include "platform/qt/qt_canvas.h"

#include <algorithm>
#include <cmath>

#include "platform/qt/qt_check_box.h"
#include "platform/qt/qt_colour.h"
#include "platform/qt/qt_image.h"
#include "platform/qt/qt_peer.h"
#include "platform/qt/qt_shown_font.h"

namespace platform {
namespace {

QPainter::CompositionMode ModeOf(RasterOperation operation) {
  switch (operation) {
    case RasterOperation::kXor:
      return QPainter::RasterOp_SourceXorDestination;
    case RasterOperation::kNotXor:
      return QPainter::RasterOp_NotSourceXorDestination;
    case RasterOperation::kNot:
      return QPainter::RasterOp_NotDestination;
    case RasterOperation::kCopy:
      break;
  }
  return QPainter::CompositionMode_Source;
}

// A second QImage on the same pixels. A plain copy would be detached, since the image is being
// painted on.
QImage ViewOf(const QImage& image) {
  QImage view(image.constBits(), image.width(), image.height(), image.bytesPerLine(),
              image.format());
  view.setDevicePixelRatio(image.devicePixelRatio());
  return view;
}

std::optional<COLORREF> ReadPixel(const QImage& pixels, POINT position) {
  const double ratio = pixels.devicePixelRatio();
  const QPoint at(qFloor((position.x + 0.5) * ratio), qFloor((position.y + 0.5) * ratio));
  if (!pixels.valid(at)) return std::nullopt;
  const QRgb pixel = pixels.pixel(at);
  return static_cast<COLORREF>(qRed(pixel) | qGreen(pixel) << 8 | qBlue(pixel) << 16);
}

// Returns the smallest image that is large enough, else the largest one: enlarged images are
// blurred.
const Image* BestImage(const IconImages& icon, double pixels) {
  const Image* best = nullptr;
  for (const Image& each : icon.images) {
    const bool suffices = each.width >= pixels;
    const bool bestSuffices = best != nullptr && best->width >= pixels;
    if (best == nullptr || (suffices && !bestSuffices) ||
        (suffices == bestSuffices && (each.width < best->width) == suffices)) {
      best = &each;
    }
  }
  return best;
}

class PainterState {
 public:
  explicit PainterState(QPainter& painter) : painter_(painter) { painter_.save(); }
  ~PainterState() { painter_.restore(); }
  PainterState(const PainterState&) = delete;
  PainterState& operator=(const PainterState&) = delete;

 private:
  QPainter& painter_;
};

void DrawImage(QPainter& painter, const Image& image, const RECT& area) {
  const PainterState state(painter);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(QRectF(QtRect(area)), DecodedImage(image));
}

}  // namespace

void QtCanvas::Fill(const RECT& area, COLORREF colour) {
  painter_.fillRect(QtRect(area), QtColour(colour));
}

void QtCanvas::Combine(std::span<const RECT> areas, COLORREF colour, RasterOperation operation) {
  painter_.setCompositionMode(ModeOf(operation));
  for (const RECT& area : areas)
    painter_.fillRect(QtRect(area), QtColour(colour));
  painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void QtCanvas::UsePen(COLORREF colour) {
  const QColor wanted = QtColour(colour);
  const QPen& pen = painter_.pen();
  if (pen.style() != Qt::SolidLine || pen.color() != wanted) painter_.setPen(wanted);
}

void QtCanvas::DrawText(std::wstring_view text, double x, double y, const TextStyle& style) {
  QtShownFont& font = ShownFont(style.font);
  const QtShapedText& shaped = font.Shaped(text);
  const QRectF line(x, y, shaped.width, font.Metrics().height);
  std::optional<PainterState> state;
  const QRectF drawn = shaped.ink.translated(x, y) | (style.background ? line : QRectF());
  if (style.clip.has_value() && !QRectF(QtRect(*style.clip)).contains(drawn)) {
    state.emplace(painter_);
    painter_.setClipRect(QtRect(*style.clip), Qt::IntersectClip);
  }
  if (style.background.has_value()) painter_.fillRect(line, QtColour(*style.background));
  UsePen(style.colour);
  for (const QGlyphRun& run : shaped.glyphs)
    painter_.drawGlyphRun(QPointF(x, y), run);
}

void QtCanvas::DrawCheckBox(const RECT& area, const CheckBoxLook& look) {
  const double ratio = painter_.device()->devicePixelRatioF();
  painter_.drawImage(QtRect(area).topLeft(), CheckBoxImage(area.right - area.left, ratio, look));
}

void QtCanvas::DrawIcon(const IconImages& icon, const RECT& area) {
  const double pixels = (area.right - area.left) * painter_.device()->devicePixelRatioF();
  if (const Image* image = BestImage(icon, pixels)) DrawImage(painter_, *image, area);
}

void QtCanvas::DrawPicture(const Image& image, const RECT& area) {
  DrawImage(painter_, image, area);
}

bool QtCanvas::CopyFrom(Canvas& source, const RECT& area, POINT sourcePosition) {
  const QImage* pixels = PixelsOf(source);
  if (pixels == nullptr) return false;
  const PainterState state(painter_);
  painter_.setCompositionMode(QPainter::CompositionMode_Source);
  const double ratio = pixels->devicePixelRatio();
  const QRectF target(QtRect(area));
  const QRectF from(QPointF(sourcePosition.x, sourcePosition.y) * ratio, target.size() * ratio);
  // Within one image, source and target may overlap.
  const QImage origin = pixels == pixels_ ? ViewOf(*pixels).copy() : ViewOf(*pixels);
  painter_.drawImage(target, origin, from);
  return true;
}

std::optional<COLORREF> QtCanvas::PixelAt(POINT position) {
  if (pixels_ == nullptr) return std::nullopt;
  const bool isClipped =
      painter_.hasClipping() && !painter_.clipRegion().contains(QPoint(position.x, position.y));
  return isClipped ? std::nullopt : ReadPixel(*pixels_, position);
}

const QImage* PixelsOf(const Canvas& canvas) {
  const auto* painted = dynamic_cast<const QtCanvas*>(&canvas);
  return painted != nullptr ? painted->Pixels() : nullptr;
}

QPixmap PixmapOf(const IconImages& icon, double pixelRatio) {
  QPixmap pixmap(QSize(icon.width, icon.height) * pixelRatio);
  pixmap.setDevicePixelRatio(pixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QtCanvas(painter).DrawIcon(icon, {0, 0, icon.width, icon.height});
  return pixmap;
}

QtPaintedImage::QtPaintedImage(SIZE size, double pixelRatio)
    : pixels(QSize(qCeil(size.cx * pixelRatio), qCeil(size.cy * pixelRatio)),
             QImage::Format_RGB32) {
  pixels.setDevicePixelRatio(pixelRatio);
  pixels.fill(Qt::black);
  painter.begin(&pixels);
}

}  // namespace platform
