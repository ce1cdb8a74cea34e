#include "ProfileMenu.h"

#include <QActionGroup>

#include "CommonClass/StandardPaths.h"
#include "widgets/SkinImage.h"

ProfileMenu::ProfileMenu(const KMVProfileCatalog& catalog, QWidget* parent) : QMenu(parent) {
  auto* choices = new QActionGroup(this);
  for (const QString& group : catalog.groups()) {
    QMenu* submenu = addMenu(group);
    for (const KMVProfileCatalog::Entry& entry : catalog.profilesInGroup(group)) {
      const QString picture =
          StandardPaths::pathForResource(QStringLiteral("skin/classical/profile/%1.svg").arg(entry->imageName));
      QAction* action = submenu->addAction(SkinImage::load(picture, palette()), entry->DisplayName);
      action->setCheckable(true);
      action->setData(entry->DisplayName);
      choices->addAction(action);
      connect(action, &QAction::triggered, this, [this, entry] { emit profileChosen(entry); });
    }
  }
}

void ProfileMenu::markCurrent(const QString& displayName) {
  for (QAction* group : actions()) {
    if (group->menu() == nullptr) continue;
    for (QAction* profile : group->menu()->actions()) profile->setChecked(profile->data().toString() == displayName);
  }
}
