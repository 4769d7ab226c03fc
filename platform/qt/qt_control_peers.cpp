#include "platform/qt/qt_control_peers.h"

namespace platform {

Qt::FocusPolicy FocusPolicyOf(DWORD style) {
  return (style & WS_TABSTOP) != 0 ? Qt::StrongFocus : Qt::ClickFocus;
}

int QtPosition(const QString& text, int position) {
  const std::wstring whole = text.toStdWString();
  const auto counted = std::min(static_cast<std::size_t>(position), whole.size());
  return static_cast<int>(QString::fromStdWString(whole.substr(0, counted)).size());
}

int LayerPosition(const QString& text, int position) {
  return static_cast<int>(text.left(position).toStdWString().size());
}

}  // namespace platform
