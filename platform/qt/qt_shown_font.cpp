#include "platform/qt/qt_shown_font.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <cwchar>
#include <list>
#include <optional>
#include <utility>

#include "platform/qt/qt_peer.h"

namespace platform {
namespace {

// Enough for some screens full of cells with short texts.
constexpr std::size_t kMostBytes = 4'000'000;
// The approximate memory of a text: a fixed part, and that of each character.
constexpr std::size_t kTextBytes = 600;
constexpr std::size_t kCharacterBytes = 30;
constexpr float kLoadFactor = 0.5;
// Programs use a few fonts at a time.
constexpr std::size_t kMostFonts = 16;

// The average over all letters, rounded to the nearest, as dialogs measure their font.
int AverageLetterWidth(const QFontMetricsF& metrics) {
  static const QString kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  return qRound(metrics.horizontalAdvance(kLetters) / static_cast<double>(kLetters.size()));
}

int WholePixels(double length) {
  return static_cast<int>(std::ceil(length));
}

TextMetrics MetricsOf(const QFont& font) {
  const QFontMetricsF metrics(font);
  const QFontInfo info(font);
  TextMetrics found;
  found.height = WholePixels(metrics.height());
  found.ascent = WholePixels(metrics.ascent());
  found.averageCharWidth = AverageLetterWidth(metrics);
  found.maximumCharWidth = WholePixels(metrics.maxWidth());
  found.dotsWidth = WholePixels(metrics.horizontalAdvance(
      QString::fromWCharArray(kDots.data(), static_cast<qsizetype>(kDots.size()))));
  found.characterHeight = info.pixelSize();
  found.isBold = font.bold();
  found.isFixedPitch = info.fixedPitch();
  return found;
}

// Replaces control characters and separators by spaces: they would break the line or move to tab
// stops.
QString Printable(std::wstring_view text) {
  QString printable = QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
  for (QChar& each : printable) {
    if (each.category() == QChar::Other_Control || each == QChar::LineSeparator ||
        each == QChar::ParagraphSeparator) {
      each = u' ';
    }
  }
  return printable;
}

// A text laid out as one line, however long.
class Line {
 public:
  Line(std::wstring_view text, const QFont& font) : layout_(Printable(text), font) {
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    layout_.setTextOption(option);
    layout_.setCacheEnabled(true);
    layout_.beginLayout();
    line_ = layout_.createLine();
    layout_.endLayout();
  }

  bool IsEmpty() const { return layout_.text().isEmpty(); }
  double Width() const { return line_.isValid() ? line_.horizontalAdvance() : 0; }
  double Ascent() const { return line_.isValid() ? line_.ascent() : 0; }
  double ReachOf(int units) const { return line_.cursorToX(units); }
  QList<QGlyphRun> Glyphs() const { return layout_.glyphRuns(); }

 private:
  QTextLayout layout_;
  QTextLine line_;
};

bool IsSame(const LOGFONTW& one, const LOGFONTW& other) {
  constexpr std::size_t kBeforeFace = offsetof(LOGFONTW, lfFaceName);
  return std::memcmp(&one, &other, kBeforeFace) == 0 &&
         std::wcsncmp(one.lfFaceName, other.lfFaceName, LF_FACESIZE) == 0;
}

struct CachedFont {
  LOGFONTW description;
  QtShownFont shown;
};

struct CachedFonts {
  // The application's font at the time of caching; most cached fonts derive from it.
  std::optional<QFont> desktopFont;
  // The most recently used first.
  std::list<CachedFont> fonts;
};

CachedFonts& Cache() {
  static CachedFonts& cache = *new CachedFonts;
  return cache;
}

}  // namespace

QtShownFont::QtShownFont(const QFont& font) : font_(font), metrics_(MetricsOf(font_)) {
  // A low load factor: entries are scattered in memory, so each step of a look-up is slow.
  recent_.max_load_factor(kLoadFactor);
  earlier_.max_load_factor(kLoadFactor);
}

std::size_t QtShownFont::CountWithin(std::wstring_view text, int width) {
  QtShapedText& entry = Shaped(text);
  if (entry.reaches.size() != text.size()) entry.reaches = ReachesOf(text);
  const auto past = std::ranges::upper_bound(entry.reaches, width);
  return static_cast<std::size_t>(past - entry.reaches.begin());
}

QtShownFont::Texts::value_type& QtShownFont::Entry(std::wstring_view text) {
  if (const auto found = recent_.find(text); found != recent_.end()) return *found;
  if (recentBytes_ > kMostBytes) {
    std::swap(earlier_, recent_);
    recent_.clear();
    recentBytes_ = 0;
    last_ = nullptr;
  }
  const auto earlier = earlier_.find(text);
  recentBytes_ += kTextBytes + kCharacterBytes * text.size();
  return earlier != earlier_.end() ? *recent_.insert(earlier_.extract(earlier)).position
                                   : *recent_.emplace(text, Shape(text)).first;
}

QtShapedText QtShownFont::Shape(std::wstring_view text) const {
  const Line line(text, font_);
  QtShapedText shaped;
  if (line.IsEmpty()) return shaped;
  shaped.width = WholePixels(line.Width());
  shaped.glyphs = line.Glyphs();
  // The base line lies on a pixel boundary.
  const QPointF down(0, metrics_.ascent - line.Ascent());
  for (QGlyphRun& run : shaped.glyphs) {
    QList<QPointF> positions = run.positions();
    for (QPointF& position : positions)
      position += down;
    run.setPositions(positions);
    shaped.ink |= run.boundingRect();
  }
  return shaped;
}

std::vector<double> QtShownFont::ReachesOf(std::wstring_view text) const {
  const Line line(text, font_);
  std::vector<double> reaches;
  reaches.reserve(text.size());
  int units = 0;
  for (const wchar_t each : text) {
    units += QChar::requiresSurrogates(static_cast<char32_t>(each)) ? 2 : 1;
    const double reach = line.ReachOf(units);
    // In right-to-left text the values fall, but the binary search needs ascending ones.
    reaches.push_back(reaches.empty() ? reach : std::max(reaches.back(), reach));
  }
  return reaches;
}

QtShownFont& ShownFont(const LOGFONTW& font) {
  auto& [desktopFont, fonts] = Cache();
  const QFont current = QApplication::font();
  if (current != desktopFont || fonts.size() > kMostFonts) fonts.clear();
  desktopFont = current;
  const auto found = std::ranges::find_if(
      fonts, [&](const CachedFont& each) { return IsSame(each.description, font); });
  if (found == fonts.end()) {
    fonts.push_front({font, QtShownFont(QtFont(font))});
  } else if (found != fonts.begin()) {
    fonts.splice(fonts.begin(), fonts, found);
  }
  return fonts.front().shown;
}

void ForgetFonts() {
  Cache() = {};
}

}  // namespace platform
