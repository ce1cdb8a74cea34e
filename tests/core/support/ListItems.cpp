#include "ListItems.h"

#include <gtest/gtest.h>

#include "Action/MainFormAction.h"
#include "Action/ProfileAction.h"
#include "CommonClass/GlobalSettings.h"
#include "CommonClass/StandardPaths.h"
#include "Profile/KMVProfileCatalog.h"
#include "TestEnvironment.h"
#include "support/ConversionTestSupport.h"
#include "videoconverter.h"

namespace modeltest {

namespace {

class AddedNodes : public MainFormActionDelegate {
 public:
  void addItemView(const NodeInfo::Ptr& node) override { nodes.append(node); }
  NodeInfo::List nodes;
};

}  // namespace

NodeInfo::List addToList(UIInfoDB& db, const QStringList& paths, const QString& scratchFolder) {
  sysTmpPath = scratchFolder;
  videoImagePath = scratchFolder + QStringLiteral("/Images");
  VideoConverter_SetTempPath(scratchFolder.toUtf8().constData());
  AddedNodes added;
  MainFormAction adding(db, &added);
  bool finished = false;
  QObject::connect(&adding, &MainFormAction::finished, [&finished] { finished = true; });
  adding.addFile(paths);
  EXPECT_TRUE(waitUntil([&finished] { return finished; })) << "adding did not finish";
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

void startWithEmptyList(const QString& scratchFolder, const QString& engineFolder) {
  TestEnvironment::resetApplicationState();
  sysTmpPath = scratchFolder;
  videoImagePath = scratchFolder + QStringLiteral("/Images");
  VideoConverter_SetTempPath(engineFolder.toUtf8().constData());
}

void endWithEmptyList() { TestEnvironment::resetApplicationState(); }

}  // namespace modeltest
