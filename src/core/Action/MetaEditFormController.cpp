#include "MetaEditFormController.h"

#include <QFileInfo>

#include <utility>

#include "ValueObject/IntValue.h"

namespace {

const QStringList kGenres{
    QStringLiteral("Alternative"), QStringLiteral("Blues"),      QStringLiteral("Children's Music"),
    QStringLiteral("Classical"),   QStringLiteral("Comedy"),     QStringLiteral("Country"),
    QStringLiteral("Dance"),       QStringLiteral("Electronic"), QStringLiteral("Folk"),
    QStringLiteral("Hip-Hop/Rap"), QStringLiteral("Holiday"),    QStringLiteral("Jazz"),
    QStringLiteral("Latin"),       QStringLiteral("New Age"),    QStringLiteral("Opera"),
    QStringLiteral("Pop"),         QStringLiteral("R&B/Soul"),   QStringLiteral("Reggae"),
    QStringLiteral("Rock"),        QStringLiteral("Soundtrack"), QStringLiteral("Spoken Word"),
    QStringLiteral("Vocal"),       QStringLiteral("World"),
};

// "%d" above 0, else nothing.
QString numberText(int32_t value) { return value > 0 ? QString::number(value) : QString(); }

// The current number from its field, and the total from its field when it
// is above the current one, else the stored total.
std::pair<int32_t, int32_t> savedNumberPair(const QString& currentText, const QString& totalText, int32_t storedTotal) {
  const int32_t current = intValue(currentText);
  const int32_t typedTotal = intValue(totalText);
  return {current, typedTotal > current ? typedTotal : storedTotal};
}

}  // namespace

MetaEditFormController::MetaEditFormController(QObject* parent) : QObject(parent), genreList_(kGenres) {}

void MetaEditFormController::showWindowModal(const NodeInfo::List& items, const NodeInfo::Ptr& selected) {
  items_ = items;
  currentNode_ = selected ? selected : items_.value(0);
  shown_ = true;
  displayFormWithMetaData();
}

void MetaEditFormController::itemViewClick(const NodeInfo::Ptr& node) {
  saveMetaData();
  currentNode_ = node;
  displayFormWithMetaData();
}

void MetaEditFormController::displayFormWithMetaData() {
  if (currentNode_) display(currentNode_->metaData());
}

void MetaEditFormController::resetButtonClick() {
  if (currentNode_) display(currentNode_->orgMetaData());
}

void MetaEditFormController::display(const MediaMetaData& tags) {
  setField(Field::Title, tags.title().isEmpty() ? currentNode_->outputFilename() : tags.title());
  setField(Field::Comment, tags.comment());
  setField(Field::Artist, tags.artist());
  setField(Field::Genre, tags.genre());
  setField(Field::Composer, tags.composer());
  setField(Field::Album, tags.album());
  setField(Field::AlbumArtist, tags.albumArtist());
  setField(Field::TrackNum, numberText(tags.curTrackNum()));
  setField(Field::TrackTotal, numberText(tags.totalTrackNum()));
  setField(Field::DiskNum, numberText(tags.curDiskNum()));
  setField(Field::DiskTotal, numberText(tags.totalDiskNum()));
  setField(Field::Grouping, tags.grouping());
  setField(Field::Year, tags.year());
  setField(Field::TvShowName, tags.tvShowName());
  setField(Field::TvSeason, tags.tvSeason());
  setField(Field::TvEpisode, tags.tvEpisode());
  setField(Field::TvEpisodeId, tags.tvEpisodeId());
  setField(Field::Description, tags.metaDescription());
  emit formChanged();

  if (!tags.image().isEmpty() && QFileInfo::exists(tags.image())) {
    setThumbnailWithPath(tags.image());
  } else {
    removeThumbnail();
  }
}

void MetaEditFormController::saveMetaData() {
  if (!currentNode_) return;
  MediaMetaData& tags = currentNode_->metaData();
  tags.setTitle(fieldText(Field::Title));
  tags.setComment(fieldText(Field::Comment));
  tags.setArtist(fieldText(Field::Artist));
  tags.setGenre(fieldText(Field::Genre));
  tags.setComposer(fieldText(Field::Composer));
  tags.setAlbum(fieldText(Field::Album));
  tags.setAlbumArtist(fieldText(Field::AlbumArtist));
  tags.setImage(imagePath_);

  const auto [track, trackTotal] =
      savedNumberPair(fieldText(Field::TrackNum), fieldText(Field::TrackTotal), tags.totalTrackNum());
  tags.setCurTrackNum(track);
  tags.setTotalTrackNum(trackTotal);
  const auto [disk, diskTotal] =
      savedNumberPair(fieldText(Field::DiskNum), fieldText(Field::DiskTotal), tags.totalDiskNum());
  tags.setCurDiskNum(disk);
  tags.setTotalDiskNum(diskTotal);

  tags.setGrouping(fieldText(Field::Grouping));
  tags.setYear(fieldText(Field::Year));
  tags.setTvShowName(fieldText(Field::TvShowName));
  tags.setTvEpisode(fieldText(Field::TvEpisode));
  tags.setTvEpisodeId(fieldText(Field::TvEpisodeId));
  tags.setTvSeason(fieldText(Field::TvSeason));
  tags.setMetaDescription(fieldText(Field::Description));
}

void MetaEditFormController::setThumbnailWithPath(const QString& path) {
  imagePath_ = path;
  emit coverChanged(imagePath_);
}

void MetaEditFormController::removeThumbnail() {
  imagePath_.clear();
  emit coverChanged(imagePath_);
}

void MetaEditFormController::kmvEditImageDidChange(const QString& imagePath) { setThumbnailWithPath(imagePath); }

void MetaEditFormController::okButtonClick() {
  saveMetaData();
  closeWindow();
}

void MetaEditFormController::cancelButtonClick() { closeWindow(); }

bool MetaEditFormController::windowShouldClose() {
  closeWindow();
  return true;
}

void MetaEditFormController::selectTab(int index) {
  if (index == selectedTab_) return;
  selectedTab_ = index;
  emit tabChanged(index);
}

bool MetaEditFormController::isNumberField(Field field) {
  return field == Field::TrackNum || field == Field::TrackTotal || field == Field::DiskNum || field == Field::DiskTotal;
}

bool MetaEditFormController::setFieldText(Field field, const QString& text) {
  if (isNumberField(field) && !numberFormatter_.isPartialStringValid(fieldText(field), text)) return false;
  setField(field, text);
  return true;
}

void MetaEditFormController::closeWindow() {
  if (!shown_) return;
  shown_ = false;
  items_.clear();
  currentNode_.reset();
  emit windowClosed();
  if (delegate_ != nullptr) delegate_->metaEditWindowClose(this);
}
