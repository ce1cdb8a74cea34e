// Parsing `videoconverter convert` arguments into a ConvertRequest. Every
// value is checked against the range its editor allows.

#include <QFileInfo>
#include <QRegularExpression>

#include <limits>
#include <span>
#include <utility>

#include "ConvertRequest.h"
#include "ValueObject/CropSettingInfo.h"
#include "ValueObject/EffectSettingInfo.h"
#include "ValueObject/ProfileSettingInfo.h"
#include "ValueObject/ValueChoice.h"
#include "ValueObject/WatermarkInfo.h"
#include "metadataedit.h"

namespace {

using Request = ConvertRequest;

struct NumberOption {
  const char* name;
  SettingRange range;
  std::optional<int> Request::*field;
  const char* meaning;
};

// How many pieces a file may be split into depends on its length, which is
// checked once the file is read; here only the lower bound.
constexpr SettingRange kAnyNumberOfPieces{1, std::numeric_limits<int32_t>::max(), 1};

const NumberOption kNumberOptions[] = {
    {"--split-minutes", kAnyNumberOfPieces, &Request::splitMinutes, "cut the output into pieces of N minutes"},
    {"--split-clips", kAnyNumberOfPieces, &Request::splitClips, "cut the output into N pieces"},
    {"--brightness", EffectSettingInfo::kBrightnessRange, &Request::brightness, "0 leaves the picture as it is"},
    {"--contrast", EffectSettingInfo::kContrastRange, &Request::contrast, "0 leaves the picture as it is"},
    {"--saturation", EffectSettingInfo::kSaturationRange, &Request::saturation, "0 leaves the picture as it is"},
    {"--depth", EffectSettingInfo::kDepthRange, &Request::depth, "depth of the 3D effect"},
    {"--volume", EffectSettingInfo::kVolumeRange, &Request::volume, "percent; 100 leaves the sound as it is"},
    {"--fade-in", EffectSettingInfo::kFadeRange, &Request::fadeIn, "seconds of sound fading in"},
    {"--fade-out", EffectSettingInfo::kFadeRange, &Request::fadeOut, "seconds of sound fading out"},
    {"--video-fade-in", EffectSettingInfo::kFadeRange, &Request::videoFadeIn,
     "seconds of picture fading in from black"},
    {"--video-fade-out", EffectSettingInfo::kFadeRange, &Request::videoFadeOut,
     "seconds of picture fading out to black"},
    {"--opacity", WatermarkInfo::kTransparencyRange, &Request::opacity, "percent opacity of the watermark"},
    {"--video-bitrate", ProfileSettingInfo::kVideoBitrateRange, &Request::videoBitrate, "kbit/s"},
    {"--audio-bitrate", ProfileSettingInfo::kAudioBitrateRange, &Request::audioBitrate, "kbit/s"},
};

constexpr ValueChoice kRotations[] = {{"0", 0}, {"90", 90}, {"180", 180}, {"270", 270}};

struct ChoiceOption {
  const char* name;
  std::span<const ValueChoice> choices;
  std::optional<int> Request::*field;
};

const ChoiceOption kChoiceOptions[] = {
    {"--fit", CropSettingInfo::kZoomChoices, &Request::fit},
    {"--rotate", kRotations, &Request::rotate},
    {"--effect", EffectSettingInfo::kEffectChoices, &Request::effect},
    {"--3d", EffectSettingInfo::kModelOf3DChoices, &Request::model3D},
};

struct TextOption {
  const char* name;
  QString Request::*field;
};

const TextOption kTextOptions[] = {
    {"--profile", &Request::profileName},
    {"--output", &Request::outputFolder},
    {"--watermark-image", &Request::watermarkImage},
    {"--watermark-text", &Request::watermarkText},
};

struct RectOption {
  const char* name;
  std::optional<QRect> Request::*field;
};

struct TagOption {
  const char* name;
  int32_t key;
};

const TagOption kTagOptions[] = {
    {"--title", METADATA_KEY_TITLE}, {"--artist", METADATA_KEY_ARTIST}, {"--album", METADATA_KEY_ALBUM},
    {"--year", METADATA_KEY_YEAR},   {"--genre", METADATA_KEY_GENRE},
};

const RectOption kRectOptions[] = {{"--crop", &Request::crop}, {"--watermark-rect", &Request::watermarkRect}};

// The command-line spelling of an editor's label: "Red/Blue" is red-blue, "Old film" oldfilm.
QString choiceName(const ValueChoice& choice) {
  return QString::fromUtf8(choice.label).toLower().remove(QLatin1Char(' ')).replace(QLatin1Char('/'), QLatin1Char('-'));
}

QString choiceNames(std::span<const ValueChoice> choices) {
  QStringList names;
  for (const ValueChoice& choice : choices) names.append(choiceName(choice));
  return names.join(QLatin1Char('|'));
}

std::optional<int> wholeNumber(const QString& text) {
  bool ok = false;
  const int value = text.trimmed().toInt(&ok);
  return ok ? std::optional<int>(value) : std::nullopt;
}

QString parseNumber(const NumberOption& option, const QString& value, Request& request) {
  const std::optional<int> number = wholeNumber(value);
  if (!number || !option.range.contains(*number)) {
    const QString bounds = option.range.maximum == kAnyNumberOfPieces.maximum
                               ? QString::number(option.range.minimum)
                               : QStringLiteral("%1 to %2").arg(option.range.minimum).arg(option.range.maximum);
    return QStringLiteral("%1 takes a whole number from %2, not '%3'.").arg(QLatin1String(option.name), bounds, value);
  }
  request.*option.field = *number;
  return {};
}

QString parseChoice(const ChoiceOption& option, const QString& value, Request& request) {
  for (const ValueChoice& choice : option.choices) {
    if (choiceName(choice) == value.toLower()) {
      request.*option.field = choice.value;
      return {};
    }
  }
  return QStringLiteral("%1 takes one of %2, not '%3'.")
      .arg(QLatin1String(option.name), choiceNames(option.choices), value);
}

QString parseRect(const RectOption& option, const QString& value, Request& request) {
  const QStringList parts = value.split(QLatin1Char(','));
  QList<int> numbers;
  for (const QString& part : parts) {
    if (const std::optional<int> number = wholeNumber(part); number && *number >= 0) numbers.append(*number);
  }
  if (parts.size() != 4 || numbers.size() != 4 || numbers[2] == 0 || numbers[3] == 0) {
    return QStringLiteral("%1 takes X,Y,W,H in pixels (W and H at least 1), not '%2'.")
        .arg(QLatin1String(option.name), value);
  }
  request.*option.field = QRect(numbers[0], numbers[1], numbers[2], numbers[3]);
  return {};
}

// The two numbers of "<number><separator><number>".
std::optional<std::pair<int, int>> numberPair(const QString& text, QChar separator) {
  const QRegularExpression pattern(QStringLiteral("^(\\d{1,9})%1(\\d{1,9})$").arg(separator));
  const QRegularExpressionMatch match = pattern.match(text.trimmed());
  if (!match.hasMatch()) return std::nullopt;
  return std::pair{match.captured(1).toInt(), match.captured(2).toInt()};
}

QString parseTrim(const QString& value, Request& request) {
  const auto times = numberPair(value, QLatin1Char('-'));
  if (!times || times->first >= times->second) {
    return QStringLiteral("--trim takes START-END in whole seconds with START before END, not '%1'.").arg(value);
  }
  request.trimStart = times->first;
  request.trimEnd = times->second;
  return {};
}

QString parseResolution(const QString& value, Request& request) {
  const auto size = numberPair(value, QLatin1Char('x'));
  if (!size || size->first < 2 || size->second < 2 || size->first > 8192 || size->second > 8192) {
    return QStringLiteral("--resolution takes WIDTHxHEIGHT from 2x2 to 8192x8192, such as 640x480, not '%1'.")
        .arg(value);
  }
  request.resolution = QSize(size->first, size->second);
  return {};
}

QString parseFlip(const QString& value, Request& request) {
  if (value == QLatin1String("h")) {
    request.flipHorizontal = true;
  } else if (value == QLatin1String("v")) {
    request.flipVertical = true;
  } else {
    return QStringLiteral("--flip takes h (left to right) or v (top to bottom), not '%1'.").arg(value);
  }
  return {};
}

QString parseTrack(const QString& value, Request& request) {
  const std::optional<int> alone = wholeNumber(value);
  const auto pair = alone ? std::optional(std::pair{*alone, 0}) : numberPair(value, QLatin1Char('/'));
  if (!pair || pair->first < 1 || pair->first > 65535 || pair->second > 65535 ||
      (pair->second != 0 && pair->second < pair->first)) {
    return QStringLiteral("--track takes N or N/TOTAL with 1 <= N <= TOTAL, not '%1'.").arg(value);
  }
  request.track = pair;
  return {};
}

QString parseCover(const QString& value, Request& request) {
  const QFileInfo picture(value);
  if (!picture.isFile() || !picture.isReadable()) {
    return QStringLiteral("--cover needs a picture file that can be read, not '%1'.").arg(value);
  }
  request.cover = picture.absoluteFilePath();
  return {};
}

QString parseAudioStream(const QString& value, Request& request) {
  if (value == QLatin1String("none")) {
    request.audioStream = -1;
    return {};
  }
  const std::optional<int> index = wholeNumber(value);
  if (!index || *index < 0)
    return QStringLiteral("--audio-stream takes a stream number from 0 or none, not '%1'.").arg(value);
  request.audioStream = index;
  return {};
}

// Applies one option with its value; an unknown option is an error.
QString parseOption(const QString& name, const QString& value, Request& request) {
  for (const NumberOption& option : kNumberOptions) {
    if (name == QLatin1String(option.name)) return parseNumber(option, value, request);
  }
  for (const ChoiceOption& option : kChoiceOptions) {
    if (name == QLatin1String(option.name)) return parseChoice(option, value, request);
  }
  for (const TextOption& option : kTextOptions) {
    if (name != QLatin1String(option.name)) continue;
    if (value.isEmpty()) return QStringLiteral("%1 needs a value that is not empty.").arg(name);
    request.*option.field = value;
    return {};
  }
  for (const RectOption& option : kRectOptions) {
    if (name == QLatin1String(option.name)) return parseRect(option, value, request);
  }
  for (const TagOption& option : kTagOptions) {
    if (name == QLatin1String(option.name)) {
      request.tags.insert(option.key, value);
      return {};
    }
  }
  if (name == QLatin1String("--track")) return parseTrack(value, request);
  if (name == QLatin1String("--cover")) return parseCover(value, request);
  if (name == QLatin1String("--trim")) return parseTrim(value, request);
  if (name == QLatin1String("--resolution")) return parseResolution(value, request);
  if (name == QLatin1String("--flip")) return parseFlip(value, request);
  if (name == QLatin1String("--audio-stream")) return parseAudioStream(value, request);
  return QStringLiteral("Unknown option %1.").arg(name);
}

// Options that make no sense together or alone.
QString conflicts(const Request& request) {
  if (request.files.isEmpty()) return QStringLiteral("No files to convert.");
  if (request.splitMinutes && request.splitClips) {
    return QStringLiteral("--split-minutes and --split-clips cannot be combined.");
  }
  if (request.merge && (request.splitMinutes || request.splitClips)) {
    return QStringLiteral(
        "A merged output is not split: --merge cannot be combined with --split-minutes or --split-clips.");
  }
  if (!request.watermarkImage.isEmpty() && !request.watermarkText.isEmpty()) {
    return QStringLiteral("--watermark-image and --watermark-text cannot be combined.");
  }
  const bool watermark = !request.watermarkImage.isEmpty() || !request.watermarkText.isEmpty();
  if (!watermark && (request.watermarkRect || request.opacity)) {
    return QStringLiteral("--watermark-rect and --opacity need --watermark-image or --watermark-text.");
  }
  if (request.depth && !request.model3D) return QStringLiteral("--depth needs --3d.");
  return {};
}

}  // namespace

ParsedConvertArguments parseConvertArguments(const QStringList& arguments) {
  Request request;
  bool onlyFiles = false;
  for (int index = 0; index < arguments.size(); ++index) {
    const QString& argument = arguments.at(index);
    if (onlyFiles || !argument.startsWith(QLatin1String("--"))) {
      request.files.append(argument);
    } else if (argument == QLatin1String("--")) {
      onlyFiles = true;
    } else if (argument == QLatin1String("--merge")) {
      request.merge = true;
    } else if (argument == QLatin1String("--yes")) {
      request.answerYes = true;
    } else if (index + 1 == arguments.size()) {
      return {std::nullopt, QStringLiteral("%1 needs a value.").arg(argument)};
    } else if (QString error = parseOption(argument, arguments.at(++index), request); !error.isEmpty()) {
      return {std::nullopt, error};
    }
  }
  if (QString error = conflicts(request); !error.isEmpty()) return {std::nullopt, error};
  return {request, QString()};
}

QString convertUsage() {
  QString usage = QStringLiteral(
      "Usage: videoconverter convert FILE... [--profile NAME] [--output DIR] [options]\n"
      "Converts each file with the profile (a name or number that `videoconverter profiles` lists;\n"
      "the profile selected last when none is given) into DIR (the default output folder when none).\n\n"
      "  --merge                    join the files in order into one output\n"
      "  --yes                      convert covers into WMV/WMA outputs without asking\n"
      "  --trim START-END           keep that part, in whole seconds\n"
      "  --crop X,Y,W,H             keep that rectangle of the picture\n"
      "  --rotate %1\n"
      "  --flip h|v                 mirror left to right or top to bottom (may be given twice)\n"
      "  --audio-stream N|none      the sound to keep, counted from 0\n"
      "  --resolution WxH           picture size of the output\n"
      "  --watermark-image PATH     draw a picture over the video\n"
      "  --watermark-text TEXT      draw a text over the video\n"
      "  --watermark-rect X,Y,W,H   where the watermark goes (a quarter of the picture at 0,0 when not given)\n"
      "  --title, --artist, --album, --year, --genre TEXT\n"
      "                             tags written into the outputs instead of the file's own\n"
      "  --track N[/TOTAL]          track number tag\n"
      "  --cover PATH               cover picture written into the outputs\n");
  usage = usage.arg(choiceNames(kRotations));
  for (const ChoiceOption& option : kChoiceOptions) {
    if (option.field == &Request::rotate) continue;
    usage += QStringLiteral("  %1 %2\n").arg(QLatin1String(option.name), choiceNames(option.choices));
  }
  for (const NumberOption& option : kNumberOptions) {
    const QString bounds = option.range.maximum == kAnyNumberOfPieces.maximum
                               ? QStringLiteral("%1 or more").arg(option.range.minimum)
                               : QStringLiteral("%1 ... %2").arg(option.range.minimum).arg(option.range.maximum);
    usage += QStringLiteral("  %1 %2: %3\n").arg(QLatin1String(option.name), bounds, QLatin1String(option.meaning));
  }
  return usage;
}
