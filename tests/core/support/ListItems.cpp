#include "ListItems.h"

#include <gtest/gtest.h>

#include "Action/MainFormAction.h"
#include "Action/NodeInfoAction.h"
#include "Action/ProfileAction.h"
#include "CommonClass/GlobalSettings.h"
#include "CommonClass/StandardPaths.h"
#include "Profile/KMVProfileCatalog.h"
#include "TestEnvironment.h"
#include "ValueObject/UIInfoDB.h"
#include "videoconverter.h"

namespace modeltest {

namespace {

class AddedNodes : public MainFormActionDelegate {
 public:
  void addItemView(const NodeInfo::Ptr& node) override { nodes.append(node); }
  NodeInfo::List nodes;
};

}  // namespace

NodeInfo::List addToList(const QStringList& paths, const QString& scratchFolder) {
  sysTmpPath = scratchFolder;
  videoImagePath = scratchFolder + QStringLiteral("/Images");
  VideoConverter_SetTempPath(scratchFolder.toUtf8().constData());
  AddedNodes added;
  MainFormAction(&added).addFile(paths);
  return added.nodes;
}

ProfileSettingInfo shippedProfile(const QString& displayName) {
  static KMVProfileCatalog catalog;
  if (catalog.profiles().isEmpty()) catalog.loadFolder(StandardPaths::pathForResource(QStringLiteral("profile")));
  const KMVProfileCatalog::Entry entry = catalog.profileNamed(displayName);
  const std::optional<ProfileSettingInfo> profile =
      entry ? ProfileAction::makeProfileSettingInfo(*entry) : std::nullopt;
  if (!profile) ADD_FAILURE() << "no usable shipped profile " << displayName.toStdString();
  return profile.value_or(ProfileSettingInfo());
}

void clearLists() {
  for (const char* name : {NodeInfoAction::kMainTableName, NodeInfoAction::kMergeTableName}) {
    UIInfoDB::defaultDB().dropInfoTable(QLatin1String(name));
  }
}

void startWithEmptyList(const QString& scratchFolder, const QString& engineFolder) {
  TestEnvironment::resetApplicationState();
  UIInfoDB::defaultDB().dropInfoTable(QLatin1String(NodeInfoAction::kMainTableName));
  sysTmpPath = scratchFolder;
  videoImagePath = scratchFolder + QStringLiteral("/Images");
  VideoConverter_SetTempPath(engineFolder.toUtf8().constData());
}

void endWithEmptyList() {
  UIInfoDB::defaultDB().dropInfoTable(QLatin1String(NodeInfoAction::kMainTableName));
  TestEnvironment::resetApplicationState();
}

}  // namespace modeltest
