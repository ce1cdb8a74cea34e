// The main window's command logic without widgets: adding, dropping and
// importing files, clearing, merging, applying a profile to all items, the
// output folder, snapshots, starting and cancelling conversion, and the
// window's three states. Alerts go through AlertPresenter, panels through
// FilePanels and revealing folders through Workspace.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Action/ConvertView.h"
#include "Action/ConvertViewList.h"
#include "Action/EditFormController.h"
#include "Action/ListThumbnails.h"
#include "Action/MainFormAction.h"
#include "Action/SplitController.h"
#include "Action/TrimCommit.h"
#include "Action/UpdateCheck.h"
#include "Profile/KMVProfileDataInfo.h"
#include "ValueObject/NodeInfo.h"
#include "ValueObject/UIInfoDB.h"

class MainFormController : public QObject,
                           public MainFormActionDelegate,
                           public ConvertViewListDelegate,
                           public TrimFormDelegate,
                           public SplitControllerDelegate,
                           public EditFormDelegate {
  Q_OBJECT

 public:
  // Empty: no items. Ready: items, nothing converting. Converting: the
  // conversion list is shown and the list cannot change.
  enum class WindowState { kEmpty, kReady, kConverting };

  // Takes a snapshot of the preview into the path, as image type 4 (png),
  // 3 (jpg) or 1; returns the player's result, 0 for success.
  using SnapshotTaker = std::function<int32_t(const QString& path, int32_t imageType)>;

  static constexpr const char* kImportRefusal = "Can't import file when the conversion is processing";
  static constexpr const char* kEmptyListAlert = "Please add files !";
  static constexpr const char* kCancelQuestion = "Cancel convertion?";
  static constexpr const char* kCompleteAlert = "Conversion complete!";
  static constexpr const char* kCoverQuestion =
      "The WMV/WMA file you're converting cannot be imported to the early version of Windows Movie Maker because it "
      "includes an album cover.Click \"Yes\" to continue converting, or \"No\" to stop.";

  // Profiles that need a codec this build may lack, with the four-character
  // code of that codec's encoder.
  static constexpr std::array<std::pair<int32_t, const char*>, 7> kAppleCodecProfiles{{
      {1601, "apcn"},
      {1602, "apch"},
      {1603, "apco"},
      {1604, "apcs"},
      {1609, "ap4h"},
      {1610, "icod"},
      {1703, "apco"},
  }};
  static constexpr const char* kCodecMissingTitle = "The Apple ProRes Codec is missing";
  static constexpr const char* kCodecMissingText =
      "Two ways to solve it :\n1.Install Finall Cut Pro/Compressor to get the codes.\n2.Download the codec package "
      "from Apple.";

  // The add-files panel's filter chosen last; the number of the next snapshot.
  static int32_t lastSelectAllowFiles;
  static int32_t kImageIndex;

  // `db` holds the lists this window works on; not owned. `addWorkers` is
  // the number of files read at once while adding, 0 for one per processor.
  explicit MainFormController(UIInfoDB& db, int addWorkers = 0);
  ~MainFormController() override;

  UIInfoDB& db() const { return db_; }
  // The main list's tree, which announces every change of the list.
  NodeTree& mainList() const;

  WindowState windowState() const { return state_; }
  // The conversion list is shown.
  bool isConverting() const { return state_ == WindowState::kConverting; }
  // Shown while converting until the user confirms cancelling.
  bool isCancelButtonVisible() const { return cancelButtonVisible_; }
  // An editor window is open; adding is refused meanwhile.
  bool isShowWindow() const { return isShowWindow_; }
  void setIsShowWindow(bool shown) { isShowWindow_ = shown; }
  bool isMergeChecked() const;
  void setMergeChecked(bool checked);
  // The output profile newly added items get.
  void setCurrentProfile(const ProfileSettingInfo& profile) { currentProfile_ = profile; }
  // The folder conversions write into; DefOutputPath until set otherwise.
  const QString& outputFolder() const { return outputFolder_; }
  void setOutputFolder(const QString& folder) { outputFolder_ = folder; }
  // Files are being read after an add; conversion cannot start meanwhile.
  bool isAdding() const { return mainFormAction_->isAdding(); }
  // The items of the main list, in order.
  NodeInfo::List videoData() const;

  // Adding files: the panel, a list of paths, drops and the download window.
  // Adding returns at once; addingFinished() follows once every file was read.
  void addFileClick();
  void addFilesToMainList(const QStringList& paths);
  void addViewByPbData(const QStringList& paths);
  void andViewByPb(const QString& path);
  void downloadFormDidAddFiles(const QStringList& paths);

  void clearAllFile();
  // Ticks every item of the list, so that all of them convert.
  void selectAllItems();
  void mergeNode(const NodeInfo::List& selection);
  // Copies the current item's profile to every item when `applyAllChecked`.
  void applyToAll(const NodeInfo::Ptr& current, bool applyAllChecked);
  void deleteItemView(const NodeInfo::Ptr& item) override;
  void moveUpClick(const NodeInfo::Ptr& item);
  void moveNextClick(const NodeInfo::Ptr& item);

  // The output folder: chosen through a panel, or revealed.
  void selectPath();
  void openOutputPath();
  // Saves a snapshot as "<photoOutputPath>/<00001>.<format>" and logs its
  // path; the path on success, empty when the player failed.
  QString photoButtonClick(const SnapshotTaker& takeSnapshot);

  // Whether the profile may be chosen: a profile that needs a codec this
  // build lacks is refused, and the missing-codec alert is shown once the
  // event loop is back (so the check can be asked from anywhere).
  static bool itemCanSelectProfile(const KMVProfileDataInfo& entry);
  // A profile was chosen for `item` in the selector: it becomes the item's
  // profile and the one remembered for the next start. False when the
  // catalogue turned out damaged: the window must then close and the program end.
  bool OnProfileSelect(const NodeInfo::Ptr& item, const KMVProfileDataInfo& entry);
  // The audio stream chosen for `item`, -1 for none.
  void audioStreamDidChange(const NodeInfo::Ptr& item, int32_t streamIndex);
  // The settings, tag and editor windows changed `item`.
  void itemChanged(const NodeInfo::Ptr& item);

  // Help and support pages, with the referral tag.
  void openHelpPage();
  void openSupportPage();
  // Asks the update feed; refused while converting.
  void checkForUpdates(bool interactive = true);
  UpdateCheck& updateCheck() { return updateCheck_; }

  void showConverterWindowModal();
  // Asks "Cancel convertion?" and cancels the whole run on Yes.
  void cancelConvertButtonClick();
  // Cancels the whole run without asking, as after that Yes.
  void cancelAllConvert();

  // The rows of the conversion list of the last start.
  const std::vector<std::unique_ptr<ConvertView>>& convertViews() const { return convertViews_; }
  ConvertViewList* convertViewList() const { return convertViewList_.get(); }

  // MainFormActionDelegate and ConvertViewListDelegate.
  void addItemView(const NodeInfo::Ptr& node) override;
  void convertEnd() override;
  void showMessage(const QString& message) override;
  // The editors' side: the trim window adds rows for its segments; every
  // editor's closing ends isShowWindow and repaints what it changed.
  void addTrimItemView(const NodeInfo::Ptr& node) override;
  void trimWindowClose(TrimFormController* controller) override;
  void splitWindowClose(SplitController* controller) override;
  void editWindowClose(const NodeInfo::Ptr& node) override;

 signals:
  void windowStateChanged(MainFormController::WindowState state);
  // Files being added: `done` of `total` read so far.
  void addingProgress(int done, int total);
  void addingFinished();
  // The run is over, before "Conversion complete!" is shown; `cancelled`
  // when the user cancelled it.
  void runEnding(bool cancelled);

 private:
  void setWindowState(WindowState state);
  // Empty or Ready, after the list changed.
  void updateListState();
  // The first item asked about, if any, lets the conversion go on.
  bool confirmCoverInWindowsMedia();
  void prepareOutputs();
  void initKMVViewList();
  void addingEnded();

  UIInfoDB& db_;
  std::unique_ptr<MainFormAction> mainFormAction_;
  ListThumbnails thumbnails_;
  UpdateCheck updateCheck_;
  QString outputFolder_;
  WindowState state_ = WindowState::kEmpty;
  bool isShowWindow_ = false;
  bool isCancelAllConvert_ = false;
  bool cancelButtonVisible_ = false;
  std::optional<ProfileSettingInfo> currentProfile_;
  std::vector<std::unique_ptr<ConvertView>> convertViews_;
  std::unique_ptr<ConvertViewList> convertViewList_;
};
