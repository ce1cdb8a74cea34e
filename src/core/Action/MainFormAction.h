// The main list's side of adding files: each file is probed, becomes a node
// under the main root with fresh settings, and the window is told to show a
// row for it. Files that cannot be decoded are reported in one alert.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

#include "ValueObject/MediaFileInfo.h"
#include "ValueObject/NodeInfo.h"

class PlayVideo;

// What the main window is told while files are added.
class MainFormActionDelegate {
 public:
  virtual ~MainFormActionDelegate() = default;
  // A node was appended to the main list.
  virtual void addItemView(const NodeInfo::Ptr& /*node*/) {}
};

class MainFormAction {
 public:
  // The adding number the next added file gets; counts every file added in
  // this process.
  static int32_t totalAddFileNum;

  explicit MainFormAction(MainFormActionDelegate* delegate = nullptr) : delegate_(delegate) {}

  // Adds each path, in order, as a node of the main list. Files that fail to
  // probe get no node and are named together in one alert at the end.
  void addFile(const QStringList& paths);

  // "<thumbnail folder>/<name without extension><stamp>.bmp"; empty while no
  // thumbnail folder is set.
  static QString thumbnailPath(const QString& path, const QString& stamp);
  // "<thumbnail folder>/thumbNail<name without extension><stamp>.bmp", where
  // the file's embedded cover is saved; empty while no thumbnail folder is set.
  static QString coverThumbnailPath(const QString& path, const QString& stamp);
  // The properties of `path` from a successful probe; `imageName` is the
  // thumbnail's path, kept only when that file exists.
  static MediaFileInfo makeMediaFileInfo(const QString& path, const QString& imageName, const PlayVideo& probe);

 private:
  MainFormActionDelegate* delegate_;
};
