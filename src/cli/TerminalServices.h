// The platform services of the command line: alerts on standard error,
// questions and panels answered on the terminal.
#pragma once

#include "CommonClass/PlatformServices.h"

class TerminalAlertPresenter : public AlertPresenter {
 public:
  // With `assumeFirstButton`, questions take their first button unasked.
  void setAssumeFirstButton(bool assume) { assumeFirstButton_ = assume; }
  void showMessage(const QString& message, const QString& informativeText) override;
  // Asks on the terminal; without one, takes the last button (the refusal).
  // Either way the question and the answer are written out.
  int ask(const QString& message, const QString& informativeText, const QStringList& buttons) override;

 private:
  bool assumeFirstButton_ = false;
};

// Panels read one path per line from the terminal; none without a terminal.
class TerminalFilePanels : public FilePanels {
 public:
  QString savePanel(const QString& suggestedPath, const QString& message) override;
  QString openFolder(const QString& startFolder) override;
  QString openSingleFile(const QStringList& extensions) override;
  QStringList openFiles(const QStringList& extensions) override;
};

// A folder to reveal is named on standard output; addresses go to the
// desktop's opener, xdg-open.
class TerminalWorkspace : public Workspace {
 public:
  bool revealInFileViewer(const QString& path) override;
  bool openAddress(const QString& address) override;
};

// The three services of the command line, installed by main() for the run.
struct TerminalServices {
  TerminalAlertPresenter alerts;
  TerminalFilePanels panels;
  TerminalWorkspace workspace;
};
