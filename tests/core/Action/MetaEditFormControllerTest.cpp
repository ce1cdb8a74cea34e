// The tag window's logic: what it shows, what it saves, reset, the cover and
// the number fields; and an edit made in it reaching a real output file.
#include <gtest/gtest.h>

#include "support/ListItems.h"

#include <QFile>

#include <vector>

#include "Action/MainFormAction.h"
#include "Action/MetaEditFormController.h"
#include "Action/NodeInfoAction.h"
#include "CommonClass/GlobalSettings.h"
#include "MediaClass/AddMetaDataAction.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"
#include "support/TaggedMedia.h"

namespace {

using Field = MetaEditFormController::Field;

class RecordingDelegate : public MetaEditFormDelegate {
 public:
  void metaEditWindowClose(MetaEditFormController* controller) override { closedBy.push_back(controller); }
  std::vector<MetaEditFormController*> closedBy;
};

NodeInfo::Ptr nodeWithTags(const QString& outputName, const MediaMetaData& tags) {
  NodeInfo::Ptr node = NodeInfo::create();
  node->setOutputFilename(outputName);
  node->setMetaData(tags);
  node->setOrgMetaData(tags);
  return node;
}

class TagWindow : public testing::Test {
 protected:
  void SetUp() override {
    controller.setDelegate(&delegate);
    QObject::connect(&controller, &MetaEditFormController::coverChanged,
                     [this](const QString& path) { coversShown.append(path); });
    QObject::connect(&controller, &MetaEditFormController::windowClosed, [this] { ++closedSignals; });
  }

  void type(Field field, const QString& text) { ASSERT_TRUE(controller.setFieldText(field, text)); }

  modeltest::MediaFolder media;
  MetaEditFormController controller;
  RecordingDelegate delegate;
  QStringList coversShown;
  int closedSignals = 0;
};

TEST_F(TagWindow, ShowsTitleOrOutputNameNumbersAbove0AndTheGenreAsChoiceOrText) {
  MediaMetaData tags;
  tags.setArtist(QStringLiteral("Artist"));
  tags.setGenre(QStringLiteral("Jazz"));
  tags.setCurTrackNum(3);
  tags.setTotalTrackNum(0);
  tags.setCurDiskNum(0);
  tags.setTotalDiskNum(2);
  const NodeInfo::Ptr untitled = nodeWithTags(QStringLiteral("output name"), tags);
  tags.setTitle(QStringLiteral("Own title"));
  tags.setGenre(QStringLiteral("Chiptune"));
  const NodeInfo::Ptr titled = nodeWithTags(QStringLiteral("ignored"), tags);

  controller.showWindowModal({untitled, titled});
  EXPECT_TRUE(controller.isShown());
  EXPECT_EQ(controller.currentNode(), untitled);
  EXPECT_EQ(controller.fieldText(Field::Title), QStringLiteral("output name"));
  EXPECT_EQ(controller.fieldText(Field::Artist), QStringLiteral("Artist"));
  EXPECT_EQ(controller.fieldText(Field::TrackNum), QStringLiteral("3"));
  EXPECT_EQ(controller.fieldText(Field::TrackTotal), QString());
  EXPECT_EQ(controller.fieldText(Field::DiskNum), QString());
  EXPECT_EQ(controller.fieldText(Field::DiskTotal), QStringLiteral("2"));
  ASSERT_GE(controller.genreIndex(), 0);
  EXPECT_EQ(controller.genreList().at(controller.genreIndex()), QStringLiteral("Jazz"));

  controller.itemViewClick(titled);
  EXPECT_EQ(controller.fieldText(Field::Title), QStringLiteral("Own title"));
  EXPECT_EQ(controller.genreIndex(), -1);
  EXPECT_EQ(controller.fieldText(Field::Genre), QStringLiteral("Chiptune"));
}

TEST_F(TagWindow, SavesEveryFieldIntoItsOwnTag) {
  const NodeInfo::Ptr node = nodeWithTags(QStringLiteral("clip"), MediaMetaData());
  controller.showWindowModal({node});
  const std::vector<std::pair<Field, QString>> typed = {
      {Field::Title, "T"},          {Field::Comment, "C"},       {Field::Artist, "Ar"},      {Field::Genre, "G"},
      {Field::Composer, "Co"},      {Field::Album, "Al"},        {Field::AlbumArtist, "AA"}, {Field::Grouping, "Gr"},
      {Field::Year, "1999"},        {Field::TvShowName, "Show"}, {Field::TvSeason, "S2"},    {Field::TvEpisode, "E5"},
      {Field::TvEpisodeId, "S2E5"}, {Field::Description, "D"},   {Field::TrackNum, "4"},     {Field::TrackTotal, "10"},
      {Field::DiskNum, "1"},        {Field::DiskTotal, "2"},
  };
  for (const auto& [field, text] : typed) type(field, text);
  controller.okButtonClick();

  const MediaMetaData& saved = node->metaData();
  const QStringList texts{saved.title(),       saved.comment(),        saved.artist(),      saved.genre(),
                          saved.composer(),    saved.album(),          saved.albumArtist(), saved.grouping(),
                          saved.year(),        saved.tvShowName(),     saved.tvSeason(),    saved.tvEpisode(),
                          saved.tvEpisodeId(), saved.metaDescription()};
  EXPECT_EQ(texts, QStringList({"T", "C", "Ar", "G", "Co", "Al", "AA", "Gr", "1999", "Show", "S2", "E5", "S2E5", "D"}));
  EXPECT_EQ(
      std::vector<int32_t>({saved.curTrackNum(), saved.totalTrackNum(), saved.curDiskNum(), saved.totalDiskNum()}),
      std::vector<int32_t>({4, 10, 1, 2}));
  EXPECT_EQ(node->orgMetaData(), MediaMetaData()) << "the tags as read stay as read";
}

TEST_F(TagWindow, ATotalNotAboveItsNumberKeepsTheStoredTotal) {
  MediaMetaData tags;
  tags.setCurTrackNum(3);
  tags.setTotalTrackNum(12);
  tags.setCurDiskNum(1);
  tags.setTotalDiskNum(2);
  const NodeInfo::Ptr node = nodeWithTags(QStringLiteral("clip"), tags);
  controller.showWindowModal({node});

  type(Field::TrackNum, QStringLiteral("5"));
  type(Field::TrackTotal, QStringLiteral("5"));
  type(Field::DiskNum, QStringLiteral("2"));
  type(Field::DiskTotal, QString());
  controller.saveMetaData();
  EXPECT_EQ(std::pair(node->metaData().curTrackNum(), node->metaData().totalTrackNum()), std::pair(5, 12));
  EXPECT_EQ(std::pair(node->metaData().curDiskNum(), node->metaData().totalDiskNum()), std::pair(2, 2));

  type(Field::TrackTotal, QStringLiteral("6"));
  type(Field::DiskNum, QString());
  type(Field::DiskTotal, QStringLiteral("1"));
  controller.saveMetaData();
  EXPECT_EQ(std::pair(node->metaData().curTrackNum(), node->metaData().totalTrackNum()), std::pair(5, 6));
  EXPECT_EQ(std::pair(node->metaData().curDiskNum(), node->metaData().totalDiskNum()), std::pair(0, 1));
}

TEST_F(TagWindow, SwitchingItemsSavesTheOneOnScreenAndCancelDropsOnlyTheLastEdits) {
  const NodeInfo::Ptr first = nodeWithTags(QStringLiteral("first"), MediaMetaData());
  const NodeInfo::Ptr second = nodeWithTags(QStringLiteral("second"), MediaMetaData());
  controller.showWindowModal({first, second}, second);
  EXPECT_EQ(controller.fieldText(Field::Title), QStringLiteral("second"));
  type(Field::Artist, QStringLiteral("Kept"));
  controller.itemViewClick(first);
  EXPECT_EQ(second->metaData().artist(), QStringLiteral("Kept"));
  EXPECT_EQ(controller.fieldText(Field::Artist), QString());

  type(Field::Artist, QStringLiteral("Dropped"));
  controller.cancelButtonClick();
  EXPECT_TRUE(first->metaData().artist().isEmpty());
  EXPECT_FALSE(controller.isShown());
  EXPECT_EQ(closedSignals, 1);
  EXPECT_EQ(delegate.closedBy, std::vector<MetaEditFormController*>{&controller});

  controller.cancelButtonClick();
  EXPECT_EQ(closedSignals, 1) << "a closed window is not closed again";
  controller.saveMetaData();
  EXPECT_TRUE(first->metaData().artist().isEmpty()) << "nothing is saved without an item";
}

TEST_F(TagWindow, ResetShowsTheTagsAsReadAndOnlyOkSavesThem) {
  const QString cover = modeltest::testPicture(media, QStringLiteral("cover.png"));
  MediaMetaData read;
  read.setTitle(QStringLiteral("As read"));
  read.setImage(cover);
  read.setCurTrackNum(2);
  const NodeInfo::Ptr node = nodeWithTags(QStringLiteral("clip"), read);
  MediaMetaData edited = read;
  edited.setTitle(QStringLiteral("Edited"));
  edited.setImage(QString());
  edited.setCurTrackNum(9);
  node->setMetaData(edited);

  controller.showWindowModal({node});
  EXPECT_EQ(controller.fieldText(Field::Title), QStringLiteral("Edited"));
  EXPECT_TRUE(controller.imagePath().isEmpty());
  controller.resetButtonClick();
  EXPECT_EQ(controller.fieldText(Field::Title), QStringLiteral("As read"));
  EXPECT_EQ(controller.fieldText(Field::TrackNum), QStringLiteral("2"));
  EXPECT_EQ(controller.imagePath(), cover);
  EXPECT_EQ(node->metaData(), edited) << "reset alone changes nothing";

  controller.okButtonClick();
  EXPECT_EQ(node->metaData().title(), QStringLiteral("As read"));
  EXPECT_EQ(node->metaData().image(), cover);
  EXPECT_EQ(node->metaData().curTrackNum(), 2);
}

TEST_F(TagWindow, TheCoverIsShownOnlyWhenItsFileExistsAndCanBeReplacedOrRemoved) {
  const QString cover = modeltest::testPicture(media, QStringLiteral("cover.png"));
  const QString dropped = modeltest::testPicture(media, QStringLiteral("dropped.jpg"));
  MediaMetaData withCover;
  withCover.setImage(cover);
  MediaMetaData coverGone;
  coverGone.setImage(media.path(QStringLiteral("deleted.bmp")));
  const NodeInfo::Ptr first = nodeWithTags(QStringLiteral("a"), withCover);
  const NodeInfo::Ptr second = nodeWithTags(QStringLiteral("b"), coverGone);

  controller.showWindowModal({first, second});
  controller.kmvEditImageDidChange(dropped);
  controller.itemViewClick(second);
  EXPECT_EQ(first->metaData().image(), dropped);
  EXPECT_TRUE(controller.imagePath().isEmpty());

  controller.itemViewClick(first);
  controller.removeThumbnail();
  controller.okButtonClick();
  EXPECT_TRUE(first->metaData().image().isEmpty());
  EXPECT_EQ(second->metaData().image(), QString()) << "a missing picture is not kept when saved";
  EXPECT_EQ(coversShown, QStringList({cover, dropped, QString(), dropped, QString()}));
}

TEST_F(TagWindow, NumberFieldsTakeOnlyTypedDigitsUpToTheMaximum) {
  const NodeInfo::Ptr node = nodeWithTags(QStringLiteral("clip"), MediaMetaData());
  controller.showWindowModal({node});
  type(Field::TrackNum, QStringLiteral("1"));
  type(Field::TrackNum, QStringLiteral("12"));
  EXPECT_FALSE(controller.setFieldText(Field::TrackNum, QStringLiteral("12a")));
  EXPECT_FALSE(controller.setFieldText(Field::TrackNum, QStringLiteral("1-2")));
  EXPECT_FALSE(controller.setFieldText(Field::TrackNum, QStringLiteral("12 ")));
  EXPECT_EQ(controller.fieldText(Field::TrackNum), QStringLiteral("12"));
  type(Field::TrackNum, QStringLiteral("1"));
  type(Field::TrackNum, QString());

  type(Field::DiskTotal, QStringLiteral("65535"));
  EXPECT_FALSE(controller.setFieldText(Field::DiskTotal, QStringLiteral("655350")));
  EXPECT_FALSE(controller.setFieldText(Field::DiskTotal, QStringLiteral("65536")));
  type(Field::DiskTotal, QStringLiteral("6535"));
  EXPECT_EQ(controller.fieldText(Field::DiskTotal), QStringLiteral("6535"));

  EXPECT_FALSE(controller.setFieldText(Field::DiskTotal, QStringLiteral("65x35"))) << "typed in the middle";
  EXPECT_FALSE(controller.setFieldText(Field::DiskTotal, QStringLiteral("6535٣")))
      << "only ASCII digits read as numbers";
  EXPECT_TRUE(controller.setFieldText(Field::Year, QStringLiteral("circa 1900"))) << "only number fields are checked";
}

class TagWindowOnImportedFiles : public TagWindow {
 protected:
  void SetUp() override {
    TagWindow::SetUp();
    modeltest::startWithEmptyList(media.path(QStringLiteral("scratch")), media.folder());
  }
  void TearDown() override { modeltest::endWithEmptyList(); }
  RecordingAlertPresenter alerts;
  ScopedAlertPresenter installed{&alerts};
};

TEST_F(TagWindowOnImportedFiles, AnEditReachesTheOutputAndResetBringsBackTheFilesTags) {
  const QString cover = modeltest::testPicture(media, QStringLiteral("cover.png"));
  const QString input = modeltest::taggedClip(media, QStringLiteral("input.mp4"),
                                              {"title=From the file", "artist=Band", "track=2/9"}, cover);
  UIInfoDB db;
  const NodeInfo::List added = modeltest::addToList(db, {input}, media.path(QStringLiteral("scratch")));
  ASSERT_EQ(added.size(), 1);
  const NodeInfo::Ptr node = added.first();
  ProfileSettingInfo mp4;
  mp4.setExtName(QStringLiteral("mp4"));
  node->setCurProfileSetting(mp4);

  controller.showWindowModal(added);
  EXPECT_EQ(controller.fieldText(Field::Title), QStringLiteral("From the file"));
  EXPECT_EQ(controller.imagePath(), node->metaData().image());
  type(Field::Title, QStringLiteral("Edited title"));
  type(Field::TrackNum, QStringLiteral("12"));
  type(Field::TrackTotal, QStringLiteral("20"));
  controller.removeThumbnail();
  controller.okButtonClick();

  const QString output = modeltest::taggedClip(media, QStringLiteral("output.mp4"), {});
  ASSERT_TRUE(AddMetaDataAction::addMetaData(*node, output).succeeded());
  const QMap<QString, QString> written = modeltest::ffprobeTags(output);
  EXPECT_EQ(written.value(QStringLiteral("title")), QStringLiteral("Edited title"));
  EXPECT_EQ(written.value(QStringLiteral("artist")), QStringLiteral("Band"));
  EXPECT_EQ(written.value(QStringLiteral("track")), QStringLiteral("1/20"));
  EXPECT_TRUE(modeltest::ffprobeCoverCodec(output).isEmpty()) << "the removed cover is not written";

  controller.showWindowModal(added);
  controller.resetButtonClick();
  EXPECT_EQ(controller.fieldText(Field::Title), QStringLiteral("From the file"));
  EXPECT_EQ(controller.fieldText(Field::TrackTotal), QStringLiteral("9"));
  EXPECT_FALSE(controller.imagePath().isEmpty());
}

}  // namespace
