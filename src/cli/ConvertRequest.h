// What `videoconverter convert` was asked to do: the files, the profile and
// output folder, and the edits given as options. Unset edits leave the
// settings a newly added item has.
#pragma once

#include <QMap>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

struct ConvertRequest {
  QStringList files;
  // A display name or an identifier; empty for the profile selected last.
  QString profileName;
  // Empty for the default output folder.
  QString outputFolder;
  bool merge = false;
  // Answers Yes to the question about a cover in WMV/WMA outputs.
  bool answerYes = false;

  // Whole seconds.
  std::optional<int> trimStart;
  std::optional<int> trimEnd;
  std::optional<int> splitMinutes;
  std::optional<int> splitClips;

  std::optional<QRect> crop;
  std::optional<int> fit;
  std::optional<int> rotate;
  bool flipHorizontal = false;
  bool flipVertical = false;
  std::optional<int> brightness;
  std::optional<int> contrast;
  std::optional<int> saturation;
  std::optional<int> effect;
  std::optional<int> model3D;
  std::optional<int> depth;

  std::optional<int> volume;
  std::optional<int> fadeIn;
  std::optional<int> fadeOut;
  std::optional<int> videoFadeIn;
  std::optional<int> videoFadeOut;

  QString watermarkImage;
  QString watermarkText;
  std::optional<QRect> watermarkRect;
  std::optional<int> opacity;

  // -1 for no sound.
  std::optional<int> audioStream;
  std::optional<QSize> resolution;
  std::optional<int> videoBitrate;
  std::optional<int> audioBitrate;

  // Tags written into the outputs instead of the input's own: key of the tag
  // library's record -> text.
  QMap<int32_t, QString> tags;
  // --track N or N/TOTAL.
  std::optional<std::pair<int, int>> track;
  QString cover;

  bool hasPictureEdits() const {
    return crop || fit || rotate || flipHorizontal || flipVertical || brightness || contrast || saturation || effect ||
           model3D || videoFadeIn || videoFadeOut || !watermarkImage.isEmpty() || !watermarkText.isEmpty();
  }
};

// The request, or why the arguments make none.
struct ParsedConvertArguments {
  std::optional<ConvertRequest> request;
  QString error;
};

ParsedConvertArguments parseConvertArguments(const QStringList& arguments);

// The command's usage text, one option a line.
QString convertUsage();

// Converts the request's files through the main window's controller as the
// convert command does, once start-up has run: 0 when every file was
// converted, 1 when any failed, 2 for an unknown profile, 130 when stopped.
int convertFiles(const ConvertRequest& request);
