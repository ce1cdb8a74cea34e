// The download window's logic without widgets: page addresses taken from the
// pasteboard become items, each analysed in turn (one analysis at a time),
// at most five downloads run at once while the rest wait first in, first
// out, every change of state rewrites the download list file, and finished
// files are handed to the delegate for conversion. It lives as long as the
// application: closing the window stops nothing.
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <memory>

#include "Download/DroglineView.h"

struct Notification;
class Pasteboard;

// Receives the files the user imports for conversion.
class DownloadFormControllerDelegate {
 public:
  virtual ~DownloadFormControllerDelegate() = default;
  virtual void downloadFormDidAddFiles(const QStringList& /*paths*/) {}
};

class DownloadFormController : public QObject, public DroglineViewDelegate {
  Q_OBJECT

 public:
  static constexpr int kMostDownloads = 5;
  static constexpr int kDisplayIntervalMs = 1000;
  // Files of pages whose address starts with this get their format appended
  // to their name when finished (no dot added; the task keeps the old name).
  // The site is no longer served, so the rule stays dormant on today's pages.
  static constexpr const char* kRenameOnFinishPrefix = "http://www.liveleak.com/";

  static constexpr const char* kTaskExistsTitle =
      "The task has been exsit, you can \"Continue download\" or \"Re-download the file\"";
  static constexpr const char* kTaskExistsText = "Re-download will remove orginal file";
  static constexpr const char* kContinueButton = "Continue download";
  static constexpr const char* kRedownloadButton = "Re-download";
  static constexpr const char* kNoLinksTitle = "No links in clipboard";
  static constexpr const char* kNoLinksText = "First,copy a link from the address bar and paste it into the program.";

  // What became of an address given to addPageAddress().
  enum class AddResult { kAdded, kExists, kNoLink };

  // `pasteboard` may be nullptr where nothing is pasted (the command line);
  // it must outlive the controller.
  explicit DownloadFormController(Pasteboard* pasteboard, QObject* parent = nullptr);
  ~DownloadFormController() override;

  // The window's start-up: restores the list from its file, sets the
  // download folder from the user defaults and creates it, listens to the
  // items' notifications and names the page analysis's work folder.
  void windowDidLoad();

  DownloadFormControllerDelegate* delegate() const { return delegate_; }
  void setDelegate(DownloadFormControllerDelegate* delegate) { delegate_ = delegate; }
  DroglineView& droglineView() { return droglineView_; }
  // The empty-list picture is shown.
  bool isEmptyListPictureVisible() const { return imgvMainVisible_; }

  const QList<DrogItemView*>& arrCurDownload() const { return arrCurDownload_; }
  const QList<DrogItemView*>& arrWaitForDownload() const { return arrWaitForDownload_; }
  const QList<DrogItemView*>& arrWaitForParam() const { return arrWaitForParam_; }
  DrogItemView* curParamView() const { return curParamView_; }
  // The one-second display timer runs.
  bool isDisplayTimerRunning() const { return getDownloadInfoTimer_ != nullptr; }

  // The paste button: adds the pasteboard's address, asks what to do with
  // one already in the list, or says there is no link.
  void getVideoDownloadURL();
  // The address completed with "http://" when it has no scheme; empty when
  // it is no link (too short, no host, or a bare host).
  static QString pageAddressOf(const QString& text);
  // Adds `text` as getVideoDownloadURL() does, without asking anything: an
  // address already in the list is left as it is.
  AddResult addPageAddress(const QString& text);
  // Links dropped on the window: each is added as a pasted one, an address
  // already in the list asks the same question, and what is no link is
  // passed over.
  void addDroppedLinks(const QStringList& texts);
  // The item whose page address is exactly `address`, or nullptr.
  DrogItemView* itemWithPageAddress(const QString& address) const;
  // Deletes the item's files and analyses it again.
  void redownload(DrogItemView* item);

  void importAllClick();
  void deleteAllClick();
  void resumeAllClick();
  void pauseAllClick();
  // Puts the selected item's page address on the pasteboard.
  void copyUrlClick();

  // Starts the item's download, or queues it when five run.
  void initRequest(DrogItemView* item);
  // Starts the oldest waiting download; stops the display timer when none runs.
  void downloadNextWaitObj();
  // The display timer's tick: speed and size of every item in state 2.
  void getVideoDownloadInfo();
  void itemDownloadDidFinish(DrogItemView* item);
  void itemDownloadDidFailed(DrogItemView* item, const QString& reason);
  // Restores the list from its file.
  void initDownloadList();
  // Writes the list file.
  void saveDownloadList();

  // Analysis: one at a time, the rest queued.
  void startToGetVideoInfo(DrogItemView* item);
  // Shows the result of the task's analysis and starts its download, or
  // marks it failed.
  void setItemViewState(VideoInfoObject* task);
  // The site icon of a page address, as a path.
  static QString diffSiteIconImage(const QString& pageAddress);

  // The items' commands, as their notifications deliver them.
  void resumeURLFetchWithProgress(DrogItemView* item);
  void didPauseURLFetch(DrogItemView* item);
  void reParamURL(DrogItemView* item);
  void drogItemViewImportClick(DrogItemView* item);

  void droglineViewDidRemoveItemView(DroglineView* list, DrogItemView* item) override;
  void DroglineViewDidReceiveRightMouseEvent(DroglineView* list) override;

 signals:
  void emptyListPictureChanged(bool visible);
  // The list file has been written: every change of state is followed by this.
  void downloadListSaved();
  // The display timer has updated the running items.
  void downloadInfoUpdated();
  // The list asks for its context menu.
  void contextMenuRequested();

 private:
  void subscribe();
  // The notification's item when it is one of this list's, else nullptr.
  DrogItemView* ownItem(const Notification& notification) const;
  void getVideoUrlEnd(const Notification& notification);
  void setEmptyListPictureVisible(bool visible);
  DrogItemView* addNewItem(const QString& pageAddress);
  // Asks whether to continue or download `item` anew, and does what is chosen.
  void askAboutExistingTask(DrogItemView* item);
  void startNextAnalysis();
  void stopDisplayTimer();

  Pasteboard* pasteboard_;
  DownloadFormControllerDelegate* delegate_ = nullptr;
  DroglineView droglineView_;
  QList<DrogItemView*> arrCurDownload_;
  QList<DrogItemView*> arrWaitForDownload_;
  QList<DrogItemView*> arrWaitForParam_;
  QPointer<DrogItemView> curParamView_;
  std::unique_ptr<QTimer> getDownloadInfoTimer_;
  bool imgvMainVisible_ = true;
  bool subscribed_ = false;
};
