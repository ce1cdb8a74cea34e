#include "ExternalTools.h"

#include <sstream>

#include "GeneratedMedia.h"

namespace enginetest {

ProcessResult runProcess(const std::vector<std::string>& arguments) {
  QStringList rest;
  for (auto argument = arguments.begin() + 1; argument != arguments.end(); ++argument) {
    rest.append(QString::fromStdString(*argument));
  }
  const testmedia::ProgramOutput output = testmedia::run(QString::fromStdString(arguments.front()), rest);
  return {output.exitCode, output.output.toStdString()};
}

std::map<std::string, std::string> ffprobeFields(const std::string& path, const std::string& section,
                                                 const std::string& selector) {
  const QMap<QString, QString> probed = testmedia::ffprobe(
      QString::fromStdString(path), QString::fromStdString(section), QString::fromStdString(selector));
  std::map<std::string, std::string> fields;
  for (auto field = probed.begin(); field != probed.end(); ++field) {
    fields.emplace(field.key().toStdString(), field.value().toStdString());
  }
  return fields;
}

int ffprobeStreamCount(const std::string& path, const std::string& codecType) {
  return testmedia::streamCount(QString::fromStdString(path), QString::fromStdString(codecType));
}

std::vector<Keyframe> ffprobeKeyframes(const std::string& path) {
  const double start = std::stod(ffprobeFields(path, "format").at("start_time"));
  const ProcessResult result = runProcess({"ffprobe", "-v", "error", "-select_streams", "v:0", "-show_entries",
                                           "packet=pts_time,pos,flags", "-of", "csv=p=0", path});
  std::vector<Keyframe> keyframes;
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::string time, position, flags;
    std::getline(fields, time, ',');
    std::getline(fields, position, ',');
    std::getline(fields, flags, ',');
    if (flags.find('K') == std::string::npos) continue;
    keyframes.push_back({std::stod(time) - start, position == "N/A" ? -1 : std::stoll(position)});
  }
  return keyframes;
}

std::vector<double> RgbPicture::meanColour(int x, int y, int w, int h) const {
  std::vector<double> sums(3, 0.0);
  for (int row = y; row < y + h; ++row) {
    for (int column = x; column < x + w; ++column) {
      for (int channel = 0; channel < 3; ++channel) sums[channel] += rgb[(row * width + column) * 3 + channel];
    }
  }
  for (double& sum : sums) sum /= static_cast<double>(w) * h;
  return sums;
}

double RgbPicture::meanBrightness() const {
  const std::vector<double> colour = meanColour(0, 0, width, height);
  return (colour[0] + colour[1] + colour[2]) / 3;
}

std::vector<RgbPicture> ffmpegPictures(const std::vector<std::string>& arguments) {
  // Each picture as a binary PPM: "P6 <width> <height> 255", one white space, the pixels.
  std::vector<std::string> command = {"ffmpeg", "-nostdin", "-v", "error"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  command.insert(command.end(), {"-f", "image2pipe", "-c:v", "ppm", "-"});
  std::istringstream stream(runProcess(command).output);
  std::vector<RgbPicture> pictures;
  std::string magic;
  int maximum = 0;
  RgbPicture picture;
  while (stream >> magic >> picture.width >> picture.height >> maximum && magic == "P6" && stream.get()) {
    picture.rgb.resize(static_cast<size_t>(picture.width) * picture.height * 3);
    if (!stream.read(reinterpret_cast<char*>(picture.rgb.data()), static_cast<std::streamsize>(picture.rgb.size()))) {
      break;
    }
    pictures.push_back(picture);
  }
  return pictures;
}

RgbPicture decodePicture(const std::string& path) {
  const std::vector<RgbPicture> first = ffmpegPictures({"-i", path, "-frames:v", "1"});
  return first.empty() ? RgbPicture{} : first.front();
}

}  // namespace enginetest
