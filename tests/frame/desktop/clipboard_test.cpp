// Text that the program offers for pasting.
#include "frame/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

#include "frame/desktop/frame_test.h"

namespace quillgate {
namespace {

TEST_F(FrameTest, ALongTextIsCopiedAsAWhole) {
  const std::wstring text = L"anna\t" + std::wstring(100'000, L'1');
  EXPECT_TRUE(CopyToClipboard(window_->Get(), L"before"));
  EXPECT_TRUE(CopyToClipboard(window_->Get(), text));
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdWString(), text);
}

}  // namespace
}  // namespace quillgate
