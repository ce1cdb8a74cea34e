// The properties window's list for items read from real files, and the about
// box read from the product information archive the build ships.
#include <gtest/gtest.h>

#include "Action/AboutBox.h"
#include "Action/MediaProperties.h"
#include "GeneratedMedia.h"
#include "ProjectVersion.h"
#include "support/ListItems.h"

namespace {

QStringList titlesOf(const QList<PropertySection>& sections) {
  QStringList titles;
  for (const PropertySection& section : sections) titles.append(section.title);
  return titles;
}

QString valueOf(const PropertySection& section, const QString& label) {
  for (const PropertyRow& row : section.rows) {
    if (row.label == label) return row.value;
  }
  return {};
}

class ItemProperties : public testing::Test {
 protected:
  void SetUp() override {
    modeltest::startWithEmptyList(media.path(QStringLiteral("scratch")), media.path(QStringLiteral("engine")));
  }
  NodeInfo::Ptr added(const QString& path) {
    const NodeInfo::List items = modeltest::addToList(db, {path}, media.path(QStringLiteral("scratch")));
    return items.value(0);
  }

  testmedia::Folder media;
  UIInfoDB db;
};

TEST_F(ItemProperties, AFileListsItsPictureEveryAudioStreamAndItsTags) {
  const NodeInfo::Ptr clip = added(media.clip(QStringLiteral("two sounds.mp4"), 2, 2, QStringLiteral("160x120")));
  ASSERT_NE(clip, nullptr);
  const QList<PropertySection> sections = mediaPropertiesOf(*clip);
  ASSERT_EQ(titlesOf(sections),
            QStringList({"File", "Picture", "Audio stream 1 (default)", "Audio stream 2"}));
  EXPECT_EQ(valueOf(sections[0], "Name"), QStringLiteral("two sounds.mp4"));
  EXPECT_EQ(valueOf(sections[0], "Length"), QStringLiteral("00:00:02"));
  EXPECT_TRUE(valueOf(sections[1], "Codec").startsWith(QStringLiteral("H.264"))) << valueOf(sections[1], "Codec").toStdString();
  EXPECT_EQ(valueOf(sections[1], "Size"), QStringLiteral("160x120"));
  EXPECT_EQ(valueOf(sections[1], "Frame rate"), QStringLiteral("25 frames per second"));
  EXPECT_EQ(valueOf(sections[1], "Stored size"), QString()) << "only shown when it differs";
  for (const PropertySection& sound : sections.mid(2)) {
    EXPECT_TRUE(valueOf(sound, "Codec").startsWith(QStringLiteral("AAC")));
    EXPECT_EQ(valueOf(sound, "Sample rate"), QStringLiteral("44100 Hz"));
    EXPECT_EQ(valueOf(sound, "Channels"), QStringLiteral("1"));
  }

  const NodeInfo::Ptr song = added(media.tagged(QStringLiteral("song.mp3"), {"title=Morning", "artist=Someone"}));
  ASSERT_NE(song, nullptr);
  const QList<PropertySection> songSections = mediaPropertiesOf(*song);
  ASSERT_EQ(titlesOf(songSections), QStringList({"File", "Audio stream 1 (default)", "Tags"}));
  EXPECT_EQ(songSections[2].rows,
            QList<PropertyRow>({{"Title", "Morning"}, {"Artist", "Someone"}}));
}

TEST(AboutBoxTest, ReadsTheShippedArchiveWithTheVersionThisProgramWasBuiltWith) {
  const AboutBox box = AboutBox::read();
  EXPECT_EQ(box.title, QStringLiteral("About ") + box.productName);
  EXPECT_EQ(box.version, QLatin1String(kBundleVersion));
  EXPECT_FALSE(box.buildDate.isEmpty());
  EXPECT_TRUE(box.copyright.startsWith(QStringLiteral("Copyright")));
  EXPECT_TRUE(box.homeAddress.startsWith(QStringLiteral("https://")));
}

}  // namespace
