#include "ListThumbnails.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "CommonClass/GlobalSettings.h"

namespace {

// The pictures made for a node while adding it: the probe's thumbnail and the saved cover.
QStringList picturesOf(const NodeInfo& node) {
  return {node.mediaFileInfo().imageName(), node.metaData().image(), node.orgMetaData().image()};
}

void addPicturesBelow(const NodeInfo::Ptr& node, QSet<QString>& pictures) {
  for (const QString& picture : picturesOf(*node)) {
    if (!picture.isEmpty()) pictures.insert(picture);
  }
  for (const NodeInfo::Ptr& child : node->childNode()) addPicturesBelow(child, pictures);
  for (const NodeInfo::Ptr& segment : node->trimData()) addPicturesBelow(segment, pictures);
}

bool isInThumbnailFolder(const QString& path) {
  return !videoImagePath.isEmpty() && QFileInfo(path).absolutePath() == QDir(videoImagePath).absolutePath();
}

}  // namespace

ListThumbnails::ListThumbnails(NodeTree& list) : list_(list) {
  connect(&list, &NodeTree::aboutToChange, this, [this](const NodeTreeChange& change) {
    if (change.kind != NodeTreeChange::Kind::kRemoved) return;
    for (int row = change.first; row <= change.last; ++row) collect(change.parent->getChildNodeAtIndex(row));
  });
  connect(&list, &NodeTree::changed, this, [this](const NodeTreeChange& change) {
    if (change.kind == NodeTreeChange::Kind::kRemoved) removeUnused();
  });
  connect(&list, &NodeTree::aboutToReset, this, [this] { collect(list_.root()); });
  connect(&list, &NodeTree::reset, this, [this] { removeUnused(); });
}

ListThumbnails::~ListThumbnails() {
  if (list_.isEmpty()) return;
  collect(list_.root());
  for (const QString& picture : std::as_const(leaving_)) {
    if (isInThumbnailFolder(picture)) QFile::remove(picture);
  }
}

void ListThumbnails::collect(const NodeInfo::Ptr& node) {
  if (node != nullptr) addPicturesBelow(node, leaving_);
}

void ListThumbnails::removeUnused() {
  QSet<QString> stillShown;
  if (!list_.isEmpty()) addPicturesBelow(list_.root(), stillShown);
  for (const QString& picture : std::as_const(leaving_)) {
    if (!stillShown.contains(picture) && isInThumbnailFolder(picture)) QFile::remove(picture);
  }
  leaving_.clear();
}
