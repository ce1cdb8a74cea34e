// An AlertPresenter that records every alert and answers questions with a
// chosen button, and a Workspace that records what it was asked to open.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

#include "CommonClass/PlatformServices.h"

class RecordingAlertPresenter : public AlertPresenter {
 public:
  struct Alert {
    QString message;
    QString informativeText;
    QStringList buttons;  // empty for informational alerts
  };

  void showMessage(const QString& message, const QString& informativeText) override {
    alerts.push_back({message, informativeText, {}});
  }
  int ask(const QString& message, const QString& informativeText, const QStringList& buttons) override {
    alerts.push_back({message, informativeText, buttons});
    return answer;
  }

  std::vector<Alert> alerts;
  int answer = 0;  // index of the button questions get
};

// A desktop that records what it was asked to reveal and opens nothing.
class RecordingWorkspace : public Workspace {
 public:
  bool revealInFileViewer(const QString& path) override {
    revealed.append(path);
    return true;
  }
  bool openAddress(const QString& address) override {
    opened.append(address);
    return true;
  }
  QStringList revealed;
  QStringList opened;
};

// Installs a presenter for the lifetime of the scope.
class ScopedAlertPresenter {
 public:
  explicit ScopedAlertPresenter(AlertPresenter* presenter) { PlatformServices::install(presenter, nullptr, nullptr); }
  ~ScopedAlertPresenter() { PlatformServices::install(nullptr, nullptr, nullptr); }
  ScopedAlertPresenter(const ScopedAlertPresenter&) = delete;
  ScopedAlertPresenter& operator=(const ScopedAlertPresenter&) = delete;
};
