// Caches fonts with the texts that were recently drawn or measured in them. Finding a font and
// shaping a text take longer than drawing it, and windows show the same texts again and again. Used
// on the window thread.
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

// One line of shaped text, relative to its upper left corner.
struct QtShapedText {
  int width = 0;
  // Encloses all pixels that are drawn.
  QRectF ink;
  QList<QGlyphRun> glyphs;
  // The widths of the first character, the first two and so on. Empty until CountWithin needs them.
  std::vector<double> reaches;
};

class QtShownFont {
 public:
  explicit QtShownFont(const QFont& font);

  const TextMetrics& Metrics() const { return metrics_; }
  // Valid until the next text is shaped in this font.
  QtShapedText& Shaped(std::wstring_view text) {
    if (last_ == nullptr || last_->first != text) last_ = &Entry(text);
    return last_->second;
  }
  // How many characters from the start of the text fit into that width.
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
  // When the recent texts are full they become the earlier ones, and those not used since are
  // dropped.
  Texts recent_;
  Texts earlier_;
  std::size_t recentBytes_ = 0;
  // The entry of recent_ used last, since a text is drawn right after it was measured; may be null.
  Texts::value_type* last_ = nullptr;
};

// Returns the cached font. Valid until the next call.
QtShownFont& ShownFont(const LOGFONTW& font);

// Clears the cache. To be called before the application is destroyed.
void ForgetFonts();

}  // namespace platform
