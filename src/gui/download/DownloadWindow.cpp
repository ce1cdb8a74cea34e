#include "DownloadWindow.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCursor>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QRegularExpression>
#include <QStackedWidget>

#include <algorithm>

#include "download/DownloadItemDelegate.h"
#include "download/DownloadListModel.h"
#include "download/DownloadSettingsSheet.h"
#include "widgets/ItemDefaultInfo.h"
#include "widgets/SkinImage.h"

namespace {

constexpr int kAnimationIntervalMs = 50;
const QSize kEmptyPictureSize(200, 140);

QPushButton* button(const char* skinName, const QString& text, QWidget* parent) {
  auto* made = new QPushButton(text, parent);
  made->setObjectName(QLatin1String(skinName));
  made->setAutoDefault(false);
  return made;
}

// The links a drop carries: web addresses, or the words of a text.
QStringList droppedLinks(const QMimeData& data) {
  QStringList links;
  for (const QUrl& url : data.urls()) {
    if (!url.isLocalFile()) links.append(url.toString());
  }
  if (links.isEmpty() && data.hasText()) {
    static const QRegularExpression whiteSpace(QStringLiteral("\\s+"));
    links = data.text().split(whiteSpace, Qt::SkipEmptyParts);
  }
  return links;
}

}  // namespace

DownloadWindow::DownloadWindow(QWidget* parent) : QDialog(parent), controller_(&pasteboard_) {
  setObjectName(QStringLiteral("winDownload"));
  setWindowTitle(tr("Download Videos"));
  setAcceptDrops(true);
  setMinimumSize(DrogItemView::kWidth + 48, 480);
  resize(DrogItemView::kWidth + 48, 620);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(makeButtonBar());
  layout->addWidget(makeListPage(), 1);
  auto* bottom = new QHBoxLayout;
  bottom->addStretch();
  QPushButton* ok = button("winDownload.btOK", tr("OK"), this);
  connect(ok, &QPushButton::clicked, this, &QDialog::close);
  bottom->addWidget(ok);
  layout->addLayout(bottom);

  menuMainList_ = new QMenu(this);
  menuMainList_->addAction(tr("Copy URL"), this, [this] { controller_.copyUrlClick(); });

  controller_.setDelegate(&importRelay_);
  connect(&controller_, &DownloadFormController::emptyListPictureChanged, this, &DownloadWindow::showEmptyListPicture);
  connect(&controller_, &DownloadFormController::contextMenuRequested, this, &DownloadWindow::showContextMenu);
  connect(&controller_.droglineView(), &DroglineView::scrollToOriginRequested, list_, &QListView::scrollToTop);
  connect(&controller_.droglineView(), &DroglineView::itemChanged, this, &DownloadWindow::animateAnalyses);
  animation_.setInterval(kAnimationIntervalMs);
  connect(&animation_, &QTimer::timeout, this, [this] {
    list_->viewport()->update();
    animateAnalyses();
  });
  controller_.windowDidLoad();
  showEmptyListPicture(controller_.isEmptyListPictureVisible());
  animateAnalyses();
}

DownloadWindow::~DownloadWindow() { controller_.setDelegate(nullptr); }

QWidget* DownloadWindow::makeButtonBar() {
  auto* bar = new QWidget(this);
  auto* layout = new QHBoxLayout(bar);
  layout->setContentsMargins(0, 0, 0, 0);
  QPushButton* paste = button("winDownload.btParseURL", tr("Paste URL"), bar);
  paste->setToolTip(tr("Add the video page whose address is on the clipboard"));
  connect(paste, &QPushButton::clicked, this, [this] { controller_.getVideoDownloadURL(); });
  QPushButton* importAll = button("winDownload.btImort", tr("Import All"), bar);
  importAll->setToolTip(tr("Add every downloaded file to the conversion list"));
  connect(importAll, &QPushButton::clicked, this, [this] { controller_.importAllClick(); });
  QPushButton* resumeAll = button("winDownload.btResumeAll", tr("Resume All"), bar);
  connect(resumeAll, &QPushButton::clicked, this, [this] { controller_.resumeAllClick(); });
  QPushButton* pauseAll = button("winDownload.btPauseAll", tr("Pause All"), bar);
  connect(pauseAll, &QPushButton::clicked, this, [this] { controller_.pauseAllClick(); });
  QPushButton* deleteAll = button("winDownload.btDeleteAll", tr("Delete All"), bar);
  connect(deleteAll, &QPushButton::clicked, this, [this] { controller_.deleteAllClick(); });
  QPushButton* settings = button("winDownload.btSetting", tr("Settings…"), bar);
  connect(settings, &QPushButton::clicked, this, &DownloadWindow::settingClick);

  layout->addWidget(paste);
  layout->addWidget(importAll);
  layout->addStretch();
  layout->addWidget(resumeAll);
  layout->addWidget(pauseAll);
  layout->addWidget(deleteAll);
  layout->addSpacing(12);
  layout->addWidget(settings);
  return bar;
}

QWidget* DownloadWindow::makeListPage() {
  pages_ = new QStackedWidget(this);

  auto* empty = new QWidget(pages_);
  auto* emptyLayout = new QVBoxLayout(empty);
  imgvMain_ = new QLabel(empty);
  imgvMain_->setObjectName(QStringLiteral("winDownload.imgvMain"));
  imgvMain_->setAlignment(Qt::AlignCenter);
  const QIcon picture =
      SkinImage::load(ItemDefaultInfo::skinFolder() + QStringLiteral("Images/downloadBg.png"), QApplication::palette());
  imgvMain_->setPixmap(picture.pixmap(kEmptyPictureSize, devicePixelRatioF()));
  auto* hint = new QLabel(tr("Copy the address of a video page, then click Paste URL or drop the link here."), empty);
  hint->setAlignment(Qt::AlignCenter);
  hint->setForegroundRole(QPalette::PlaceholderText);
  emptyLayout->addStretch();
  emptyLayout->addWidget(imgvMain_);
  emptyLayout->addWidget(hint);
  emptyLayout->addStretch();
  pages_->addWidget(empty);

  list_ = new QListView(pages_);
  list_->setObjectName(QStringLiteral("winDownload.downloadList"));
  model_ = new DownloadListModel(controller_.droglineView(), list_);
  delegate_ = new DownloadItemDelegate(list_);
  list_->setModel(model_);
  list_->setItemDelegate(delegate_);
  list_->setSelectionMode(QAbstractItemView::NoSelection);
  list_->setUniformItemSizes(true);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setFrameShape(QFrame::NoFrame);
  pages_->addWidget(list_);
  return pages_;
}

void DownloadWindow::showEmptyListPicture(bool visible) {
  pages_->setCurrentIndex(visible ? 0 : 1);
  imgvMain_->setVisible(visible);
}

void DownloadWindow::showContextMenu() {
  if (controller_.droglineView().getSeleteView() != nullptr) menuMainList_->popup(QCursor::pos());
}

void DownloadWindow::settingClick() {
  auto* sheet = new DownloadSettingsSheet(this);
  sheet->setAttribute(Qt::WA_DeleteOnClose);
  sheet->open();
}

void DownloadWindow::animateAnalyses() {
  const QList<DrogItemView*>& items = controller_.droglineView().getChildItem();
  const bool animating = std::any_of(items.begin(), items.end(), [](const DrogItemView* item) {
    return item->isProgressAnimating() && item->isVisible(DrogItemView::Element::progressBar);
  });
  if (animating && !animation_.isActive()) animation_.start();
  if (!animating) animation_.stop();
}

void DownloadWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!droppedLinks(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void DownloadWindow::dropEvent(QDropEvent* event) {
  const QStringList links = droppedLinks(*event->mimeData());
  if (links.isEmpty()) return;
  event->acceptProposedAction();
  controller_.addDroppedLinks(links);
}
