// Edit controls as Qt's line edits.
#include <QLineEdit>
#include <QValidator>
#include <algorithm>

#include "platform/qt/qt_control_peers.h"
#include "platform/qt/qt_paste.h"

namespace platform {
namespace {

qsizetype NonDigits(const QString& text) {
  return std::ranges::count_if(text, [](QChar each) { return each < u'0' || each > u'9'; });
}

// Accepts only digits from the user, whatever text was set before.
class DigitValidator final : public QValidator {
 public:
  using QValidator::QValidator;

  void Allow(const QString& text) { allowed_ = NonDigits(text); }

 private:
  State validate(QString& text, int& /*position*/) const override {
    return NonDigits(text) <= allowed_ ? Acceptable : Invalid;
  }

  qsizetype allowed_ = 0;
};

Qt::Alignment AlignmentOf(DWORD style) {
  if ((style & ES_RIGHT) != 0) return Qt::AlignRight | Qt::AlignVCenter;
  return ((style & ES_CENTER) != 0 ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter;
}

class QtEditPeer final : public QtControlPeer<EditPeer> {
 public:
  QtEditPeer(QLineEdit* edit, const PeerOrigin& origin, EditEvents& events)
      : QtControlPeer(edit, origin), edit_(edit) {
    edit->setFocusPolicy(FocusPolicyOf(origin.style));
    edit->setAlignment(AlignmentOf(origin.style));
    edit->setReadOnly((origin.style & ES_READONLY) != 0);
    if ((origin.style & ES_PASSWORD) != 0) edit->setEchoMode(QLineEdit::Password);
    if ((origin.style & ES_NUMBER) != 0) digits_ = new DigitValidator(edit);
    edit->setValidator(digits_);
    new QtPaste(*edit);
    QObject::connect(edit, &QLineEdit::textEdited, Context(), [this, &events](const QString& text) {
      Bound(text);
      events.OnEdited(text.toStdWString());
    });
  }

  void SetText(const std::wstring& text) override {
    const QString shown = QString::fromStdWString(text);
    Bound(shown);
    edit_->setText(shown);
    edit_->setCursorPosition(0);
  }
  void SetSelection(const EditSelection& selection) override {
    const int anchor = QtPosition(edit_->text(), selection.anchor);
    const int caret = QtPosition(edit_->text(), selection.caret);
    edit_->setCursorPosition(caret);
    if (anchor != caret) edit_->setSelection(anchor, caret - anchor);
  }
  EditSelection Selection() const override {
    const QString text = edit_->text();
    const int caret = LayerPosition(text, edit_->cursorPosition());
    if (!edit_->hasSelectedText()) return {caret, caret};
    const int start = LayerPosition(text, edit_->selectionStart());
    const int end = LayerPosition(text, edit_->selectionEnd());
    return caret == start ? EditSelection{end, start} : EditSelection{start, end};
  }
  void SetReadOnly(bool readOnly) override { edit_->setReadOnly(readOnly); }
  void SetLimit(int characters) override {
    limit_ = characters;
    Bound(edit_->text());
  }

 private:
  // Without this, Qt would cut a longer text, and reject every change of one with letters.
  void Bound(const QString& text) {
    edit_->setMaxLength(std::max(limit_, static_cast<int>(text.size())));
    if (digits_ != nullptr) digits_->Allow(text);
  }

  QPointer<QLineEdit> edit_;
  DigitValidator* digits_ = nullptr;
  int limit_ = 30'000;
};

}  // namespace

std::unique_ptr<EditPeer> QtControlPeers::MakeEdit(const PeerOrigin& origin, EditEvents& events) {
  return std::make_unique<QtEditPeer>(new QLineEdit(WidgetOf(origin.parent)), origin, events);
}

}  // namespace platform
