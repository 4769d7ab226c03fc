#include "platform/qt/qt_help_page.h"

#include <QImage>
#include <QTextDocument>

namespace platform {
namespace {

constexpr qreal kMargin = 12;

std::wstring AddressOf(const QUrl& url) {
  return url.toString(QUrl::FullyEncoded).toStdWString();
}

// Never null, for which the toolkit would look for a file of the picture's name.
QImage PictureOf(const QByteArray& bytes) {
  QImage picture = QImage::fromData(bytes);
  if (!picture.isNull()) return picture;
  QImage nothing(1, 1, QImage::Format_ARGB32);
  nothing.fill(Qt::transparent);
  return nothing;
}

}  // namespace

QtHelpPage::QtHelpPage(HelpEvents& events) : events_(&events) {
  setOpenLinks(false);
  document()->setDocumentMargin(kMargin);
  connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) {
    if (events_ != nullptr) events_->OnLink(AddressOf(url));
  });
}

void QtHelpPage::ShowPage(const HelpPage& page) {
  setHtml(QString::fromStdWString(page.html));
  if (!page.anchor.empty()) scrollToAnchor(QString::fromStdWString(page.anchor));
  mark_ = QString::fromStdWString(page.mark);
  FindNext();
}

void QtHelpPage::FindNext() {
  if (mark_.isEmpty() || find(mark_)) return;
  moveCursor(QTextCursor::Start);
  find(mark_);
}

QVariant QtHelpPage::loadResource(int type, const QUrl& name) {
  const QByteArray bytes = BytesOf(name);
  if (type == QTextDocument::ImageResource) return PictureOf(bytes);
  return bytes;
}

QByteArray QtHelpPage::BytesOf(const QUrl& name) const {
  const std::string* found = events_ != nullptr ? events_->FindResource(AddressOf(name)) : nullptr;
  return found != nullptr ? QByteArray::fromStdString(*found) : QByteArray();
}

}  // namespace platform
