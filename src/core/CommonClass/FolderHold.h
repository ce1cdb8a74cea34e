// Marks a folder as in use by this process: an exclusive lock on a file
// inside it, held until the process lets it go or ends (a crashed process
// loses its hold with it). Another program asks before it removes the folder.
#pragma once

#include <QString>

class FolderHold {
 public:
  FolderHold() = default;
  ~FolderHold() { release(); }
  FolderHold(const FolderHold&) = delete;
  FolderHold& operator=(const FolderHold&) = delete;

  // Takes the hold on `folder` (which must exist), letting go of any earlier
  // one; false when another process holds it.
  bool hold(const QString& folder);
  void release();

  // Whether a running process holds `folder`.
  static bool isHeld(const QString& folder);
  // The file inside `folder` whose lock is the hold.
  static QString holdFilePath(const QString& folder);

 private:
  int descriptor_ = -1;
};
