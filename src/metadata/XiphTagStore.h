// Tags of Ogg Vorbis, Opus and FLAC files as Vorbis comments. Track and disk
// totals are fields of their own (TRACKTOTAL, DISCTOTAL); pictures are
// picture blocks, kept in the comment for Ogg and in the stream for FLAC.
#pragma once

#include <taglib/flacfile.h>
#include <taglib/flacpicture.h>
#include <taglib/xiphcomment.h>

#include "TagStore.h"

namespace metadata {

class XiphTagStore : public TagStore {
 public:
  explicit XiphTagStore(TagLib::Ogg::XiphComment& comment) : comment_(comment) {}

  TagLib::StringList text(MetaDataKey key) const override;
  bool setText(MetaDataKey key, const TagLib::String& value) override;
  NumberPair number(MetaDataKey key) const override;
  void setNumber(MetaDataKey key, NumberPair value) override;
  std::optional<CoverPicture> cover() const override;
  void setCover(const std::optional<CoverPicture>& picture) override;

 protected:
  static std::optional<CoverPicture> frontCover(const TagLib::List<TagLib::FLAC::Picture*>& pictures);
  static TagLib::FLAC::Picture* newPictureBlock(const CoverPicture& picture);

 private:
  TagLib::StringList field(const char* name) const;
  void setField(const char* name, const TagLib::String& value);

  TagLib::Ogg::XiphComment& comment_;
};

// FLAC keeps its pictures in metadata blocks of the stream, not in the comment.
class FlacTagStore : public XiphTagStore {
 public:
  FlacTagStore(TagLib::FLAC::File& file, TagLib::Ogg::XiphComment& comment) : XiphTagStore(comment), file_(file) {}

  std::optional<CoverPicture> cover() const override;
  void setCover(const std::optional<CoverPicture>& picture) override;

 private:
  TagLib::FLAC::File& file_;
};

}  // namespace metadata
