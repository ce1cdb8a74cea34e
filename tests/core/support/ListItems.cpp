#include "ListItems.h"

#include <gtest/gtest.h>

#include "Action/MainFormAction.h"
#include "Action/ProfileAction.h"
#include "CommonClass/GlobalSettings.h"
#include "CommonClass/StandardPaths.h"
#include "EventLoopWait.h"
#include "Profile/KMVProfileCatalog.h"
#include "TestEnvironment.h"
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

const KMVProfileCatalog& shippedCatalog() {
  static const KMVProfileCatalog catalog = [] {
    KMVProfileCatalog loaded;
    loaded.loadFolder(StandardPaths::pathForResource(QStringLiteral("profile")));
    return loaded;
  }();
  return catalog;
}

ProfileSettingInfo shippedProfile(const QString& displayName) {
  const KMVProfileCatalog::Entry entry = shippedCatalog().profileNamed(displayName);
  const std::optional<ProfileSettingInfo> profile =
      entry ? ProfileAction::makeProfileSettingInfo(*entry) : std::nullopt;
  if (!profile) ADD_FAILURE() << "no usable shipped profile " << displayName.toStdString();
  return profile.value_or(ProfileSettingInfo());
}

ProfileSettingInfo smallProfile(const QString& format, const QString& extension, const QString& videoEncoder,
                                const QString& audioEncoder) {
  ProfileSettingInfo profile;
  profile.setProfileName(QStringLiteral("Small ") + extension);
  profile.setFormat(format);
  profile.setExtName(extension);
  profile.setType(ProfileSettingInfo::kTypeVideo);
  profile.setVideoEncoder(videoEncoder);
  profile.setVideoResolution(QStringLiteral("160x120"));
  profile.setVideoFrameRate(15);
  profile.setVideoBitrate(200);
  profile.setAudioEncoder(audioEncoder);
  profile.setAudioSampleRate(44100);
  profile.setAudioBitrate(64);
  profile.setAudioChannels(1);
  return profile;
}

NodeInfo::Ptr namedNode(const QString& name, int32_t type) {
  NodeInfo::Ptr node = NodeInfo::create();
  node->setType(type);
  node->setOutputFilename(name);
  return node;
}

QStringList outputNames(const NodeInfo::List& nodes) {
  QStringList names;
  for (const NodeInfo::Ptr& node : nodes) names.append(node->outputFilename());
  return names;
}

void startWithEmptyList(const QString& scratchFolder, const QString& engineFolder) {
  TestEnvironment::resetApplicationState();
  sysTmpPath = scratchFolder;
  videoImagePath = scratchFolder + QStringLiteral("/Images");
  VideoConverter_SetTempPath(engineFolder.toUtf8().constData());
}

}  // namespace modeltest
