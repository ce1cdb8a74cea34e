#include "Id3v2TagStore.h"

#include <array>

#include <taglib/attachedpictureframe.h>
#include <taglib/commentsframe.h>
#include <taglib/id3v1genres.h>
#include <taglib/textidentificationframe.h>

#include "FieldNames.h"

namespace metadata {
namespace {

using TagLib::ID3v2::AttachedPictureFrame;
using TagLib::ID3v2::CommentsFrame;
using TagLib::ID3v2::TextIdentificationFrame;
using TagLib::ID3v2::UserTextIdentificationFrame;

constexpr std::array<FieldName, 8> kTextFrames{{
    {METADATA_KEY_TITLE, "TIT2"},
    {METADATA_KEY_ARTIST, "TPE1"},
    {METADATA_KEY_GENRE, "TCON"},
    {METADATA_KEY_COMPOSER, "TCOM"},
    {METADATA_KEY_ALBUM, "TALB"},
    {METADATA_KEY_ALBUM_ARTIST, "TPE2"},
    {METADATA_KEY_GROUPING, "TIT1"},
    {METADATA_KEY_YEAR, "TDRC"},
}};

// Fields without a frame of their own live in TXXX frames of these descriptions.
constexpr std::array<FieldName, 5> kUserTextFrames{{
    {METADATA_KEY_TV_SHOW_NAME, "TVSHOW"},
    {METADATA_KEY_TV_SEASON, "TVSEASON"},
    {METADATA_KEY_TV_EPISODE, "TVEPISODE"},
    {METADATA_KEY_TV_EPISODE_ID, "TVEPISODEID"},
    {METADATA_KEY_DESCRIPTION, "DESCRIPTION"},
}};

constexpr std::array<FieldName, 2> kNumberFrames{{
    {METADATA_KEY_TRACK, "TRCK"},
    {METADATA_KEY_DISK, "TPOS"},
}};

// TCON may hold ID3v1 genre numbers instead of names.
TagLib::StringList genreNames(const TagLib::StringList& values) {
  TagLib::StringList names;
  for (const TagLib::String& value : values) {
    bool isNumber = false;
    int index = value.toInt(&isNumber);
    names.append(isNumber ? TagLib::ID3v1::genre(index) : value);
  }
  return names;
}

}  // namespace

TagLib::StringList Id3v2TagStore::text(MetaDataKey key) const {
  if (key == METADATA_KEY_COMMENT) return commentText();
  if (const char* description = fieldName(kUserTextFrames, key)) return userText(description);
  const char* frameId = fieldName(kTextFrames, key);
  if (frameId == nullptr) return {};
  TagLib::StringList values = frameText(frameId);
  return key == METADATA_KEY_GENRE ? genreNames(values) : values;
}

bool Id3v2TagStore::setText(MetaDataKey key, const TagLib::String& value) {
  if (key == METADATA_KEY_COMMENT) {
    setCommentText(value);
  } else if (const char* description = fieldName(kUserTextFrames, key)) {
    setUserText(description, value);
  } else if (const char* frameId = fieldName(kTextFrames, key)) {
    setFrameText(frameId, value);
  } else {
    return false;
  }
  return true;
}

NumberPair Id3v2TagStore::number(MetaDataKey key) const {
  const char* frameId = fieldName(kNumberFrames, key);
  if (frameId == nullptr) return {};
  TagLib::StringList values = frameText(frameId);
  return values.isEmpty() ? NumberPair{} : readNumberPair(values.front().to8Bit(true));
}

void Id3v2TagStore::setNumber(MetaDataKey key, NumberPair value) {
  const char* frameId = fieldName(kNumberFrames, key);
  if (frameId == nullptr) return;
  setFrameText(frameId, value.current > 0 ? TagLib::String(formatNumberPair(value), TagLib::String::UTF8) : "");
}

std::optional<CoverPicture> Id3v2TagStore::cover() const {
  const AttachedPictureFrame* chosen = nullptr;
  for (TagLib::ID3v2::Frame* frame : tag_.frameList("APIC")) {
    auto* picture = dynamic_cast<AttachedPictureFrame*>(frame);
    if (picture == nullptr) continue;
    if (chosen == nullptr || picture->type() == AttachedPictureFrame::FrontCover) chosen = picture;
    if (picture->type() == AttachedPictureFrame::FrontCover) break;
  }
  if (chosen == nullptr) return std::nullopt;
  return CoverPicture{chosen->picture(), chosen->mimeType().to8Bit(true)};
}

void Id3v2TagStore::setCover(const std::optional<CoverPicture>& picture) {
  tag_.removeFrames("APIC");
  if (!picture) return;
  auto* frame = new AttachedPictureFrame;
  frame->setTextEncoding(TagLib::String::UTF8);
  frame->setType(AttachedPictureFrame::FrontCover);
  frame->setMimeType(picture->mimeType);
  frame->setPicture(picture->data);
  tag_.addFrame(frame);
}

TagLib::StringList Id3v2TagStore::commentText() const {
  for (TagLib::ID3v2::Frame* frame : tag_.frameList("COMM")) {
    auto* comment = dynamic_cast<CommentsFrame*>(frame);
    if (comment != nullptr && comment->description().isEmpty()) return TagLib::StringList(comment->text());
  }
  return {};
}

void Id3v2TagStore::setCommentText(const TagLib::String& value) {
  // Only the plain comment is replaced; described ones belong to other programs.
  while (CommentsFrame* old = CommentsFrame::findByDescription(&tag_, "")) tag_.removeFrame(old);
  if (value.isEmpty()) return;
  auto* frame = new CommentsFrame(TagLib::String::UTF8);
  frame->setLanguage("eng");
  frame->setText(value);
  tag_.addFrame(frame);
}

TagLib::StringList Id3v2TagStore::userText(const char* description) const {
  auto* frame = UserTextIdentificationFrame::find(&tag_, description);
  if (frame == nullptr) return {};
  // The first field of a TXXX frame is its description.
  TagLib::StringList values = frame->fieldList();
  if (!values.isEmpty()) values.erase(values.begin());
  return values;
}

void Id3v2TagStore::setUserText(const char* description, const TagLib::String& value) {
  while (auto* old = UserTextIdentificationFrame::find(&tag_, description)) tag_.removeFrame(old);
  if (value.isEmpty()) return;
  tag_.addFrame(new UserTextIdentificationFrame(description, TagLib::StringList(value), TagLib::String::UTF8));
}

TagLib::StringList Id3v2TagStore::frameText(const char* frameId) const {
  const TagLib::ID3v2::FrameList& frames = tag_.frameList(frameId);
  if (frames.isEmpty()) return {};
  if (auto* textFrame = dynamic_cast<TextIdentificationFrame*>(frames.front())) return textFrame->fieldList();
  return TagLib::StringList(frames.front()->toString());
}

void Id3v2TagStore::setFrameText(const char* frameId, const TagLib::String& value) {
  tag_.removeFrames(frameId);
  if (value.isEmpty()) return;
  auto* frame = new TextIdentificationFrame(frameId, TagLib::String::UTF8);
  frame->setText(value);
  tag_.addFrame(frame);
}

}  // namespace metadata
