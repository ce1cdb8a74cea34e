// What core needs from a window system, as small interfaces that gui/ (Qt
// dialogs), cli/ (the terminal) and tests (recording fakes) implement.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <utility>

// Alert panels: the message text is the title line, the informative text the
// body. Implementations run on the main thread.
class AlertPresenter {
 public:
  virtual ~AlertPresenter() = default;
  // Informational alert with the single button "OK".
  virtual void showMessage(const QString& message, const QString& informativeText) = 0;
  // Alert with the given buttons, first button first; returns the index of
  // the button chosen.
  virtual int ask(const QString& message, const QString& informativeText, const QStringList& buttons) = 0;
};

// Open and save panels. An empty result means the user cancelled.
class FilePanels {
 public:
  virtual ~FilePanels() = default;
  // Save panel for `suggestedPath`; the file type must keep its extension.
  virtual QString savePanel(const QString& suggestedPath, const QString& message) = 0;
  // One folder, starting at `startFolder`; folder creation allowed.
  virtual QString openFolder(const QString& startFolder) = 0;
  // One file with one of `extensions` (no dots).
  virtual QString openSingleFile(const QStringList& extensions) = 0;
  // Any number of files with those extensions, and folders.
  virtual QStringList openFiles(const QStringList& extensions) = 0;

  // A filter of the add-files panel: its name and the extensions it allows
  // (none: every file).
  using Filter = std::pair<QString, QStringList>;
  // Several files through a panel that offers `filters` in order, starting in
  // `startFolder` with filter `chosenFilter` selected; `chosenFilter` then
  // holds the filter the user left selected. Panels without filters offer
  // the extensions of the chosen one.
  virtual QStringList openFilesWithFilters(const QString& /*startFolder*/, const QList<Filter>& filters,
                                           int& chosenFilter) {
    return openFiles(filters.value(chosenFilter).second);
  }
};

// The desktop: reveal files in the file viewer, open addresses.
class Workspace {
 public:
  virtual ~Workspace() = default;
  virtual bool revealInFileViewer(const QString& path) = 0;
  virtual bool openAddress(const QString& address) = 0;
};

// The process's implementations, installed by main() before start-up. The
// services are not owned; nullptr uninstalls.
namespace PlatformServices {
void install(AlertPresenter* alerts, FilePanels* panels, Workspace* workspace);
AlertPresenter* alerts();
FilePanels* panels();
Workspace* workspace();
}  // namespace PlatformServices
