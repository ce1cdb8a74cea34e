#include "PlatformServices.h"

#include <atomic>

namespace {
std::atomic<AlertPresenter*> installedAlerts{nullptr};
std::atomic<FilePanels*> installedPanels{nullptr};
std::atomic<Workspace*> installedWorkspace{nullptr};
}  // namespace

namespace PlatformServices {

void install(AlertPresenter* alerts, FilePanels* panels, Workspace* workspace) {
  installedAlerts = alerts;
  installedPanels = panels;
  installedWorkspace = workspace;
}

AlertPresenter* alerts() { return installedAlerts; }
FilePanels* panels() { return installedPanels; }
Workspace* workspace() { return installedWorkspace; }

}  // namespace PlatformServices
