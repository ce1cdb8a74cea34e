// Entry of the engine's tests: the engine keeps its scratch files in this
// process's private folder.
#include <gtest/gtest.h>

#include <filesystem>

#include "TestMedia.h"
#include "videoconverter.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const std::filesystem::path engineTemp = std::filesystem::path(enginetest::scratchFolder()) / "engine-temp";
  std::filesystem::create_directories(engineTemp);
  VideoConverter_SetTempPath(engineTemp.c_str());
  return RUN_ALL_TESTS();
}
