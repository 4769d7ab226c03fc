// Fonts as they are shown, with the texts that were lately drawn or measured in them: finding a
// font and shaping a text take longer than drawing it, and windows show the same texts again and
// again. Used on the window thread.
#pragma once

#include <windows.h>

#include <QFont>
#include <QGlyphRun>
#include <QList>
#include <QRectF>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/gdi/graphics_backend.h"

namespace platform {

// One line, from its upper left corner on.
struct QtShapedText {
  int width = 0;
  // What is not blank lies inside of it.
  QRectF ink;
  QList<QGlyphRun> glyphs;
  // How far the first character, the first two and so on reach; only once somebody has asked.
  std::vector<double> reaches;
};

class QtShownFont {
 public:
  explicit QtShownFont(const QFont& font);

  const TextMetrics& Metrics() const { return metrics_; }
  // Good until the next text is shaped in this font.
  QtShapedText& Shaped(std::wstring_view text) {
    if (last_ == nullptr || last_->first != text) last_ = &Entry(text);
    return last_->second;
  }
  // How many of the text's first characters take no more than that width.
  std::size_t CountWithin(std::wstring_view text, int width);

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const {
      return std::hash<std::wstring_view>()(text);
    }
  };
  using Texts = std::unordered_map<std::wstring, QtShapedText, Hash, std::equal_to<>>;

  Texts::value_type& Entry(std::wstring_view text);
  QtShapedText Shape(std::wstring_view text) const;
  std::vector<double> ReachesOf(std::wstring_view text) const;

  QFont font_;
  TextMetrics metrics_;
  // What has not been used since the recent ones were begun is dropped when they are full.
  Texts recent_;
  Texts earlier_;
  std::size_t recentBytes_ = 0;
  // Of the recent ones, since a text is drawn right after it has been measured; may be null.
  Texts::value_type* last_ = nullptr;
};

// What shows text in that logical font. Good until the next font is asked for.
QtShownFont& ShownFont(const LOGFONTW& font);

// All of them, before the toolkit ends.
void ForgetFonts();

}  // namespace platform
