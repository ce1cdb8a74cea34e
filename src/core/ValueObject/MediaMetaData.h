// The tags of one list node: text fields, track and disc numbers with their
// totals, the TV-show fields and the path of the cover picture. A node keeps
// two: the tags to write and the tags as read from its file.
#pragma once

#include <QString>

#include <cstdint>

#include "metadataedit.h"

class MediaMetaData {
 public:
  // The tags of the file at `path`, with its cover saved at `thumbnailPath`
  // (reported as `image`). Empty tags when the file cannot be read; `result`
  // receives the tag library's code when given.
  static MediaMetaData initWithFile(const QString& path, const QString& thumbnailPath, int32_t* result = nullptr);

  // Takes the record's entries in order; a later entry with the same key
  // wins. Keys 10 and 11 are "N" or "N/TOTAL"; unknown keys are ignored.
  void getValueFromDataInfos(const MetaDataInfo& info);

  // The text field of a tag key (1 ... 9 and 12 ... 18); other keys have
  // none: text() answers an empty text and setText() does nothing.
  QString text(int32_t key) const;
  void setText(int32_t key, const QString& value);

  const QString& title() const { return title_; }
  void setTitle(const QString& value) { title_ = value; }
  const QString& comment() const { return comment_; }
  void setComment(const QString& value) { comment_ = value; }
  const QString& artist() const { return artist_; }
  void setArtist(const QString& value) { artist_ = value; }
  const QString& genre() const { return genre_; }
  void setGenre(const QString& value) { genre_ = value; }
  // Every genre of the file; read only, never written.
  const QString& genres() const { return genres_; }
  void setGenres(const QString& value) { genres_ = value; }
  const QString& composer() const { return composer_; }
  void setComposer(const QString& value) { composer_ = value; }
  const QString& album() const { return album_; }
  void setAlbum(const QString& value) { album_ = value; }
  const QString& albumArtist() const { return albumArtist_; }
  void setAlbumArtist(const QString& value) { albumArtist_ = value; }
  // Path of the cover picture.
  const QString& image() const { return image_; }
  void setImage(const QString& path) { image_ = path; }
  int32_t curTrackNum() const { return curTrackNum_; }
  void setCurTrackNum(int32_t value) { curTrackNum_ = value; }
  int32_t totalTrackNum() const { return totalTrackNum_; }
  void setTotalTrackNum(int32_t value) { totalTrackNum_ = value; }
  int32_t curDiskNum() const { return curDiskNum_; }
  void setCurDiskNum(int32_t value) { curDiskNum_ = value; }
  int32_t totalDiskNum() const { return totalDiskNum_; }
  void setTotalDiskNum(int32_t value) { totalDiskNum_ = value; }
  const QString& grouping() const { return grouping_; }
  void setGrouping(const QString& value) { grouping_ = value; }
  const QString& year() const { return year_; }
  void setYear(const QString& value) { year_ = value; }
  const QString& tvShowName() const { return tvShowName_; }
  void setTvShowName(const QString& value) { tvShowName_ = value; }
  const QString& tvSeason() const { return tvSeason_; }
  void setTvSeason(const QString& value) { tvSeason_ = value; }
  const QString& tvEpisode() const { return tvEpisode_; }
  void setTvEpisode(const QString& value) { tvEpisode_ = value; }
  const QString& tvEpisodeId() const { return tvEpisodeId_; }
  void setTvEpisodeId(const QString& value) { tvEpisodeId_ = value; }
  const QString& metaDescription() const { return metaDescription_; }
  void setMetaDescription(const QString& value) { metaDescription_ = value; }

  bool operator==(const MediaMetaData&) const = default;

 private:
  // The member holding a text key's value; nullptr for the number keys and
  // keys out of range.
  static QString MediaMetaData::*textMember(int32_t key);
  // "N" sets the current number; "N/TOTAL" both; more parts are ignored.
  static void readNumberPair(const QString& value, int32_t& current, int32_t& total);

  QString title_;
  QString comment_;
  QString artist_;
  QString genre_;
  QString genres_;
  QString composer_;
  QString album_;
  QString albumArtist_;
  QString image_;
  int32_t curTrackNum_ = 0;
  int32_t totalTrackNum_ = 0;
  int32_t curDiskNum_ = 0;
  int32_t totalDiskNum_ = 0;
  QString grouping_;
  QString year_;
  QString tvShowName_;
  QString tvSeason_;
  QString tvEpisode_;
  QString tvEpisodeId_;
  QString metaDescription_;
};
