#include "FormatOpeners.h"

#include <taglib/aifffile.h>
#include <taglib/apefile.h>
#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2synchdata.h>
#include <taglib/infotag.h>
#include <taglib/mp4file.h>
#include <taglib/mpcfile.h>
#include <taglib/mpegfile.h>
#include <taglib/opusfile.h>
#include <taglib/trueaudiofile.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>
#include <taglib/wavpackfile.h>

#include "ApeTagStore.h"
#include "AsfTagStore.h"
#include "Id3v2TagStore.h"
#include "Mp4TagStore.h"
#include "TrailingApeTag.h"
#include "XiphTagStore.h"

namespace metadata {
namespace {

using Parts = TaggedFile::Parts;

// The companion tags the file has; TagLib makes empty ones of some kinds in
// memory, which must not be written into files that never had them.
std::vector<TagLib::Tag*> present(std::initializer_list<TagLib::Tag*> tags) {
  std::vector<TagLib::Tag*> result;
  for (TagLib::Tag* tag : tags) {
    if (tag != nullptr) result.push_back(tag);
  }
  return result;
}

// The file's own save() for formats that need no options.
template <typename FileType>
std::function<bool()> plainSave(FileType* file) {
  return [file] { return file->save(); };
}

std::optional<Parts> openMp4(TagLib::IOStream& stream) {
  auto file = std::make_unique<TagLib::MP4::File>(&stream);
  TagLib::MP4::Tag* tag = file->isValid() ? file->tag() : nullptr;
  if (tag == nullptr) return std::nullopt;
  auto save = plainSave(file.get());
  return Parts{std::move(file), std::make_unique<Mp4TagStore>(*tag), tag, {}, save};
}

std::optional<Parts> openMpeg(TagLib::IOStream& stream) {
  auto file = std::make_unique<TagLib::MPEG::File>(&stream, TagLib::ID3v2::FrameFactory::instance());
  if (!file->isValid()) return std::nullopt;
  TagLib::ID3v2::Tag* tag = file->ID3v2Tag(true);
  std::vector<TagLib::Tag*> companions =
      present({file->hasID3v1Tag() ? file->ID3v1Tag() : nullptr, file->hasAPETag() ? file->APETag() : nullptr});
  // Keep whatever tag kinds the file has, in ID3v2.4, and let the companions be synchronised here.
  auto save = [raw = file.get()] {
    return raw->save(TagLib::MPEG::File::AllTags, TagLib::File::StripNone, TagLib::ID3v2::v4,
                     TagLib::File::DoNotDuplicate);
  };
  return Parts{std::move(file), std::make_unique<Id3v2TagStore>(*tag), tag, companions, save};
}

std::optional<Parts> openTrueAudio(TagLib::IOStream& stream) {
  auto file = std::make_unique<TagLib::TrueAudio::File>(&stream);
  if (!file->isValid()) return std::nullopt;
  TagLib::ID3v2::Tag* tag = file->ID3v2Tag(true);
  std::shared_ptr<TrailingApeTag> apeTag = TrailingApeTag::find(*file);
  std::vector<TagLib::Tag*> companions =
      present({file->hasID3v1Tag() ? file->ID3v1Tag() : nullptr, apeTag ? &apeTag->tag() : nullptr});
  auto save = [raw = file.get(), apeTag] { return raw->save() && (!apeTag || apeTag->save()); };
  return Parts{std::move(file), std::make_unique<Id3v2TagStore>(*tag), tag, companions, save};
}

std::optional<Parts> openAiff(TagLib::IOStream& stream) {
  auto file = std::make_unique<TagLib::RIFF::AIFF::File>(&stream);
  TagLib::ID3v2::Tag* tag = file->isValid() ? file->tag() : nullptr;
  if (tag == nullptr) return std::nullopt;
  auto save = plainSave(file.get());
  return Parts{std::move(file), std::make_unique<Id3v2TagStore>(*tag), tag, {}, save};
}

std::optional<Parts> openWav(TagLib::IOStream& stream) {
  auto file = std::make_unique<TagLib::RIFF::WAV::File>(&stream);
  TagLib::ID3v2::Tag* tag = file->isValid() ? file->ID3v2Tag() : nullptr;
  if (tag == nullptr) return std::nullopt;
  std::vector<TagLib::Tag*> companions = present({file->hasInfoTag() ? file->InfoTag() : nullptr});
  auto save = [raw = file.get()] {
    return raw->save(TagLib::RIFF::WAV::File::AllTags, TagLib::File::StripNone, TagLib::ID3v2::v4);
  };
  return Parts{std::move(file), std::make_unique<Id3v2TagStore>(*tag), tag, companions, save};
}

std::optional<Parts> openFlac(TagLib::IOStream& stream) {
  auto file = std::make_unique<TagLib::FLAC::File>(&stream, TagLib::ID3v2::FrameFactory::instance());
  if (!file->isValid()) return std::nullopt;
  TagLib::Ogg::XiphComment* comment = file->xiphComment(true);
  std::vector<TagLib::Tag*> companions =
      present({file->hasID3v2Tag() ? file->ID3v2Tag() : nullptr, file->hasID3v1Tag() ? file->ID3v1Tag() : nullptr});
  auto save = plainSave(file.get());
  auto store = std::make_unique<FlacTagStore>(*file, *comment);
  return Parts{std::move(file), std::move(store), comment, companions, save};
}

template <typename OggFile>
std::optional<Parts> openOggCodec(TagLib::IOStream& stream) {
  auto file = std::make_unique<OggFile>(&stream);
  TagLib::Ogg::XiphComment* comment = file->isValid() ? file->tag() : nullptr;
  if (comment == nullptr) return std::nullopt;
  auto save = plainSave(file.get());
  return Parts{std::move(file), std::make_unique<XiphTagStore>(*comment), comment, {}, save};
}

// An Ogg file's first stream decides its codec; the extension does not tell.
// FLAC in Ogg is left out: TagLib 1.13 saves such files in a form it cannot read back.
std::optional<Parts> openOgg(TagLib::IOStream& stream) {
  if (auto parts = openOggCodec<TagLib::Ogg::Vorbis::File>(stream)) return parts;
  return openOggCodec<TagLib::Ogg::Opus::File>(stream);
}

std::optional<Parts> openAsf(TagLib::IOStream& stream) {
  auto file = std::make_unique<TagLib::ASF::File>(&stream);
  TagLib::ASF::Tag* tag = file->isValid() ? file->tag() : nullptr;
  if (tag == nullptr) return std::nullopt;
  auto save = plainSave(file.get());
  return Parts{std::move(file), std::make_unique<AsfTagStore>(*tag), tag, {}, save};
}

// APE, WavPack and Musepack files: an APE tag, perhaps with an ID3v1 tag.
template <typename ApeTaggedFile>
std::optional<Parts> openApeTagged(TagLib::IOStream& stream) {
  auto file = std::make_unique<ApeTaggedFile>(&stream);
  if (!file->isValid()) return std::nullopt;
  TagLib::APE::Tag* tag = file->APETag(true);
  std::vector<TagLib::Tag*> companions = present({file->hasID3v1Tag() ? file->ID3v1Tag() : nullptr});
  auto save = plainSave(file.get());
  return Parts{std::move(file), std::make_unique<ApeTagStore>(*tag), tag, companions, save};
}

// Whether the stream, after any ID3v2 tag, starts with the signature of a
// Musepack stream of version 7 or 8. Older versions have no signature, and
// TagLib takes any bytes for one; such files are too old to be met.
bool hasMusepackSignature(TagLib::IOStream& stream) {
  stream.seek(0);
  TagLib::ByteVector start = stream.readBlock(10);
  long offset = 0;
  if (start.startsWith("ID3") && start.size() == 10) {
    offset = 10 + TagLib::ID3v2::SynchData::toUInt(start.mid(6, 4));
    if ((start[5] & 0x10) != 0) offset += 10;  // footer present
  }
  stream.seek(offset);
  TagLib::ByteVector signature = stream.readBlock(4);
  return signature == "MPCK" || signature.startsWith("MP+");
}

std::optional<Parts> openMusepack(TagLib::IOStream& stream) {
  if (!hasMusepackSignature(stream)) return std::nullopt;
  return openApeTagged<TagLib::MPC::File>(stream);
}

}  // namespace

std::optional<TaggedFile::Parts> openFormat(TagLib::IOStream& stream, FormatFamily family) {
  switch (family) {
    case FormatFamily::Mp4: return openMp4(stream);
    case FormatFamily::Mpeg: return openMpeg(stream);
    case FormatFamily::Flac: return openFlac(stream);
    case FormatFamily::Ogg: return openOgg(stream);
    case FormatFamily::Asf: return openAsf(stream);
    case FormatFamily::Aiff: return openAiff(stream);
    case FormatFamily::Wav: return openWav(stream);
    case FormatFamily::Ape: return openApeTagged<TagLib::APE::File>(stream);
    case FormatFamily::WavPack: return openApeTagged<TagLib::WavPack::File>(stream);
    case FormatFamily::Musepack: return openMusepack(stream);
    case FormatFamily::TrueAudio: return openTrueAudio(stream);
  }
  return std::nullopt;
}

}  // namespace metadata
