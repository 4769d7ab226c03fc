#include <QHBoxLayout>
#include <QLabel>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <functional>
#include <utility>

#include "platform/qt/qt_desktop_loss.h"
#include "platform/qt/qt_help.h"
#include "platform/qt/qt_help_page.h"
#include "platform/qt/qt_help_panels.h"
#include "platform/qt/qt_peer.h"

namespace platform {
namespace {

constexpr int kPanelWidth = 250;
constexpr int kTopicWidth = 630;
constexpr qsizetype kLongestNotice = 300;

QString Text(std::wstring_view text) {
  return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
}

class HelpWidget final : public QWidget {
 public:
  explicit HelpWidget(HelpEvents& events);

  // The window is destroyed; the widget lives on until it is retired.
  void Forget();

  QtHelpPage& Page() { return *page_; }
  QtHelpContents& Contents() { return *contents_; }
  QtHelpSearch& Search() { return *search_; }
  void SetTexts(const HelpTexts& texts);
  void SetPaths(bool back, bool forward);
  void ShowNotice(const QString& notice);

 private:
  using Report = std::function<void(HelpEvents&)>;

  QToolButton* Button(const char* name, QStyle::StandardPixmap icon, QKeySequence key,
                      const Report& report);
  void OnKey(QKeySequence key, std::function<void()> act);
  QLayout* Buttons();
  QWidget* Panels();
  void OpenSearch();

  HelpEvents* events_;
  QToolButton* back_ = nullptr;
  QToolButton* forward_ = nullptr;
  QToolButton* home_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  QtHelpContents* contents_ = nullptr;
  QtHelpSearch* search_ = nullptr;
  QtHelpPage* page_ = nullptr;
  QLabel* notice_ = nullptr;
};

// Tab moves in the order of creation.
HelpWidget::HelpWidget(HelpEvents& events) : QWidget(nullptr, Qt::Window), events_(&events) {
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(Buttons());
  layout->addWidget(Panels(), 1);
  notice_ = new QLabel(this);
  notice_->setObjectName("notice");
  notice_->setTextFormat(Qt::PlainText);
  notice_->setWordWrap(true);
  notice_->hide();
  layout->addWidget(notice_);
  OnKey(Qt::CTRL | Qt::Key_F, [this] { OpenSearch(); });
  OnKey(Qt::Key_F3, [this] { page_->FindNext(); });
  OnKey(Qt::Key_Escape, [this] { close(); });
}

void HelpWidget::Forget() {
  events_ = nullptr;
  page_->Forget();
  contents_->Forget();
  search_->Forget();
}

QLayout* HelpWidget::Buttons() {
  auto* layout = new QHBoxLayout;
  back_ = Button("back", QStyle::SP_ArrowBack, Qt::ALT | Qt::Key_Left,
                 [](HelpEvents& events) { events.OnBack(); });
  forward_ = Button("forward", QStyle::SP_ArrowForward, Qt::ALT | Qt::Key_Right,
                    [](HelpEvents& events) { events.OnForward(); });
  home_ = Button("home", QStyle::SP_DirHomeIcon, Qt::ALT | Qt::Key_Home,
                 [](HelpEvents& events) { events.OnHome(); });
  for (QToolButton* each : {back_, forward_, home_})
    layout->addWidget(each);
  layout->addStretch();
  return layout;
}

QToolButton* HelpWidget::Button(const char* name, QStyle::StandardPixmap icon, QKeySequence key,
                                const Report& report) {
  auto* button = new QToolButton(this);
  button->setObjectName(name);
  button->setAutoRaise(true);
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setIcon(style()->standardIcon(icon));
  connect(button, &QToolButton::clicked, this, [this, report] {
    if (events_ != nullptr) report(*events_);
  });
  // A shortcut of the button itself would be lost with the next text, and would act with a delay.
  OnKey(key, [button] { button->click(); });
  return button;
}

void HelpWidget::OnKey(QKeySequence key, std::function<void()> act) {
  auto* shortcut = new QShortcut(key, this);
  connect(shortcut, &QShortcut::activated, this, std::move(act));
}

QWidget* HelpWidget::Panels() {
  auto* splitter = new QSplitter(this);
  splitter->setChildrenCollapsible(false);
  tabs_ = new QTabWidget(splitter);
  contents_ = new QtHelpContents(*events_);
  search_ = new QtHelpSearch(*events_);
  tabs_->addTab(contents_, QString());
  tabs_->addTab(search_, QString());
  page_ = new QtHelpPage(*events_);
  page_->setObjectName("topic");
  splitter->addWidget(page_);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({kPanelWidth, kTopicWidth});
  return splitter;
}

void HelpWidget::OpenSearch() {
  tabs_->setCurrentWidget(search_);
  search_->EnterWords();
}

void HelpWidget::SetTexts(const HelpTexts& texts) {
  back_->setText(Text(texts.back));
  forward_->setText(Text(texts.forward));
  home_->setText(Text(texts.home));
  tabs_->setTabText(tabs_->indexOf(contents_), Text(texts.contents));
  tabs_->setTabText(tabs_->indexOf(search_), Text(texts.search));
  search_->SetTexts(Text(texts.words), Text(texts.nothingFound));
}

void HelpWidget::SetPaths(bool back, bool forward) {
  back_->setEnabled(back);
  forward_->setEnabled(forward);
}

void HelpWidget::ShowNotice(const QString& notice) {
  notice_->setText(notice.left(kLongestNotice));
  notice_->setVisible(!notice.isEmpty());
}

class QtHelpViewer final : public QtPeer<HelpViewerPeer> {
 public:
  QtHelpViewer(WindowEvents& events, HelpEvents& helpEvents)
      : QtPeer(new HelpWidget(helpEvents), events) {}
  ~QtHelpViewer() override {
    if (Widget() != nullptr) Viewer().Forget();
  }
  QtHelpViewer(const QtHelpViewer&) = delete;
  QtHelpViewer& operator=(const QtHelpViewer&) = delete;

  // The focus stays with the part of the window that had it.
  void Focus() override {
    QWidget* inside = Viewer().focusWidget();
    if (inside == nullptr || inside == Widget()) inside = &Viewer().Page();
    inside->setFocus(Qt::OtherFocusReason);
  }
  void Activate() override {
    SurvivesUse([this] { Viewer().setWindowState(Viewer().windowState() & ~Qt::WindowMinimized); });
    QtPeer::Activate();
  }

  void SetTexts(const HelpTexts& texts) override { Viewer().SetTexts(texts); }
  void SetContents(const std::vector<HelpEntry>& entries) override {
    Viewer().Contents().SetEntries(entries);
  }
  void SelectEntry(std::optional<std::size_t> place) override { Viewer().Contents().Select(place); }
  void SetResults(const std::vector<HelpResult>& results) override {
    Viewer().Search().SetResults(results);
  }
  void ShowPage(const HelpPage& page) override {
    Viewer().ShowNotice({});
    Viewer().Page().ShowPage(page);
  }
  void SetPaths(bool back, bool forward) override { Viewer().SetPaths(back, forward); }
  void ShowNotice(const std::wstring& notice) override { Viewer().ShowNotice(Text(notice)); }

 private:
  HelpWidget& Viewer() const { return *static_cast<HelpWidget*>(Widget()); }
};

}  // namespace

std::unique_ptr<HelpViewerPeer> QtHelp::MakeViewer(WindowEvents& events, HelpEvents& helpEvents) {
  return std::make_unique<QtHelpViewer>(events, helpEvents);
}

}  // namespace platform
