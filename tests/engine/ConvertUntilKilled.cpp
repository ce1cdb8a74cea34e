// A conversion in a process of its own, for the tests that kill one midway:
// converts the MediaItem and the OutputParam stored in two files, prints
// "written" once the given microseconds of output are on disk, and then holds
// the conversion there until the process is killed.
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "Transcoder.h"

namespace {

template <typename Record>
bool readRecord(const char* path, Record& record) {
  std::ifstream file(path, std::ios::binary);
  return static_cast<bool>(file.read(reinterpret_cast<char*>(&record), sizeof record));
}

}  // namespace

int main(int argc, char** argv) {
  MediaItem item{};
  OutputParam output{};
  if (argc != 4 || !readRecord(argv[1], item) || !readRecord(argv[2], output)) {
    std::fprintf(stderr, "usage: %s MEDIA-ITEM-FILE OUTPUT-PARAM-FILE MICROSECONDS\n", argv[0]);
    return 2;
  }
  const int64_t reportAfterUs = std::stoll(argv[3]);
  engine::Transcoder transcoder({item}, output);
  transcoder.setProgressObserver([reportAfterUs](int64_t writtenUs) {
    if (writtenUs < reportAfterUs) return;
    std::puts("written");
    std::fflush(stdout);
    for (;;) pause();
  });
  transcoder.run();
  return 1;  // the test kills the process before the conversion can end
}
