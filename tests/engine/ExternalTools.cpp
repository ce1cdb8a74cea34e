#include "ExternalTools.h"

#include <sys/wait.h>
#include <unistd.h>

#include <set>
#include <sstream>

namespace enginetest {

StartedProcess startProcess(const std::vector<std::string>& arguments) {
  int pipeEnds[2];
  if (pipe(pipeEnds) != 0) return {};
  const pid_t child = fork();
  if (child < 0) return {};
  if (child == 0) {
    dup2(pipeEnds[1], STDOUT_FILENO);
    close(pipeEnds[0]);
    close(pipeEnds[1]);
    std::vector<char*> argv;
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    execvp(argv[0], argv.data());
    _exit(127);
  }
  close(pipeEnds[1]);
  return {child, pipeEnds[0]};
}

ProcessResult runProcess(const std::vector<std::string>& arguments) {
  const StartedProcess started = startProcess(arguments);
  if (started.pid < 0) return {};
  ProcessResult result;
  char buffer[65536];
  ssize_t count = 0;
  while ((count = read(started.output, buffer, sizeof buffer)) > 0) result.output.append(buffer, count);
  close(started.output);
  int status = 0;
  waitpid(started.pid, &status, 0);
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

bool runFfmpeg(const std::vector<std::string>& arguments) {
  std::vector<std::string> command = {"ffmpeg", "-nostdin", "-v", "error", "-y"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return runProcess(command).exitCode == 0;
}

std::map<std::string, std::string> ffprobeFields(const std::string& path, const std::string& section,
                                                 const std::string& selector) {
  std::vector<std::string> command = {"ffprobe",         "-v", "error", "-of", "default=noprint_wrappers=1",
                                      "-show_" + section};
  if (!selector.empty()) command.insert(command.end(), {"-select_streams", selector});
  command.push_back(path);
  std::map<std::string, std::string> fields;
  std::istringstream lines(runProcess(command).output);
  std::string line;
  while (std::getline(lines, line)) {
    const auto equals = line.find('=');
    if (equals != std::string::npos) fields.emplace(line.substr(0, equals), line.substr(equals + 1));
  }
  return fields;
}

int ffprobeStreamCount(const std::string& path, const std::string& codecType) {
  const ProcessResult result =
      runProcess({"ffprobe", "-v", "error", "-show_entries", "stream=index,codec_type", "-of", "csv=p=0", path});
  // A transport stream lists its streams under their program too, hence the set.
  std::set<std::string> indexes;
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::string index, type;
    if (std::getline(fields, index, ',') && std::getline(fields, type, ',') && type == codecType) {
      indexes.insert(index);
    }
  }
  return static_cast<int>(indexes.size());
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

RgbPicture decodePicture(const std::string& path) {
  // As a binary PPM: "P6 <width> <height> 255" and the pixels, upright as players show them.
  const ProcessResult result = runProcess(
      {"ffmpeg", "-nostdin", "-v", "error", "-i", path, "-frames:v", "1", "-f", "image2pipe", "-c:v", "ppm", "-"});
  std::istringstream stream(result.output);
  std::string magic;
  int maximum = 0;
  RgbPicture picture;
  if (!(stream >> magic >> picture.width >> picture.height >> maximum) || magic != "P6") return {};
  stream.get();  // the single white space before the pixels
  picture.rgb.resize(static_cast<size_t>(picture.width) * picture.height * 3);
  if (!stream.read(reinterpret_cast<char*>(picture.rgb.data()), static_cast<std::streamsize>(picture.rgb.size()))) {
    return {};
  }
  return picture;
}

}  // namespace enginetest
