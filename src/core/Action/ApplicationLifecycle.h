// The start-up and shutdown sequences of the application, in their binding
// order. What needs a window is asked of a MainWindowShell, which the main
// window implements in full and the command line in part.
#pragma once

#include <QDateTime>
#include <QString>

// The window-side steps. Defaults do nothing, as a headless run needs.
class MainWindowShell {
 public:
  virtual ~MainWindowShell() = default;

  // Registers the skinned components, loads the skin and lays out the form.
  virtual void layOutMainForm() {}
  // The skin folder "<skin root>/<style>/" announced to the family's programs.
  virtual QString skinFolder() const { return {}; }
  // Another program changed the skin: re-lay-out the form named `formName`.
  virtual void reloadSkin(const QString& /*formName*/) {}
  // Creates the update service; `checkNow` starts a background check.
  virtual void createUpdater(bool /*checkNow*/) {}
  // Loads the profile catalogue from `profileFolder` (problems go to the log)
  // and selects `profileName`; an unknown name selects the default profile
  // and makes it kProfileName.
  virtual void setUpProfiles(const QString& profileFolder, const QString& saveFolder, const QString& profileName);
  // Puts the window's controls in their idle (empty list) state.
  virtual void setIdleState() {}

  virtual bool hasPlayer() const { return false; }
  virtual void stopPlayback() {}
  virtual bool isConversionListVisible() const { return false; }
  virtual bool isCancelButtonVisible() const { return false; }
  virtual void hideCancelButton() {}
  virtual void cancelConvertAll() {}
  virtual void releaseObjects() {}
};

class ApplicationLifecycle {
 public:
  // The profile selected when none was selected before.
  static constexpr const char* kDefaultProfileName = "MPEG-4 AVC";

  // Names the organisation, application and version that the user defaults
  // and per-user folders are filed under. Call right after making the
  // application object.
  static void identifyApplication();

  // Runs the start-up sequence; `shell` also identifies the controller's
  // notification subscriptions.
  static void startUp(MainWindowShell& shell);
  // The termination question and clean-up; false keeps the application running.
  static bool applicationShouldTerminate(MainWindowShell& shell);
  // The close-window question; false keeps the window open. Saves nothing.
  static bool windowShouldClose(MainWindowShell& shell);

  // This run's temporary folder: removes the previous run's (user default
  // "TmpPath"), makes <temporary folder><yyyyMMddHHmmss in UTC+8>, hands it
  // to the converter library and remembers it. Returns the path.
  static QString createMemoryTmpPath(const QDateTime& now = QDateTime::currentDateTimeUtc());
  // "%Y%m%d%H%M%S" of `moment` in the fixed UTC+8 zone.
  static QString timeStampUTC8(const QDateTime& moment);

 private:
  static bool askCancelConversion();
};
