#include "MainFormAction.h"

#include <QFileInfo>

#include "Action/NodeInfoAction.h"
#include "Action/UIAction.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"

int32_t MainFormAction::totalAddFileNum = 0;

MainFormAction::MainFormAction(UIInfoDB& db, MainFormActionDelegate* delegate, int workerCount, QObject* parent)
    : QObject(parent), db_(db), delegate_(delegate), importer_(workerCount) {
  connect(&importer_, &MediaFileImporter::fileImported, this, &MainFormAction::fileImported);
  connect(&importer_, &MediaFileImporter::finished, this, &MainFormAction::batchFinished);
}

QString MainFormAction::decodeFailedTitle(int count, const QString& failedNames) {
  const bool one = count == 1;
  const QString detail =
      one ? QStringLiteral("%1 file:\n%2 Decode failed") : QStringLiteral("%1 files:\n%2 Decode failed");
  return (one ? QStringLiteral("There is ") : QStringLiteral("There are ")) +
         detail.arg(QString::number(count), failedNames);
}

void MainFormAction::addFile(const QStringList& paths) {
  if (paths.isEmpty()) return;
  UIAction::creatOutputDirectory(sysTmpPath);
  UIAction::creatOutputDirectory(videoImagePath);
  importer_.add(paths);
  emit progress(importer_.doneCount(), importer_.totalCount());
}

void MainFormAction::fileImported(const MediaFileImporter::Result& result) {
  if (result.node == nullptr) {
    failedNames_ += QFileInfo(result.path).fileName() + QLatin1Char('\n');
    ++failedCount_;
  } else {
    result.node->setAddNum(totalAddFileNum++);
    NodeTree& list = NodeInfoAction::mainList(db_);
    list.addChild(list.root(), result.node);
    if (delegate_ != nullptr) delegate_->addItemView(result.node);
  }
  emit progress(importer_.doneCount(), importer_.totalCount());
}

void MainFormAction::batchFinished() {
  if (failedCount_ > 0) CommonClass::showMessage(decodeFailedTitle(failedCount_, failedNames_), QString());
  failedNames_.clear();
  failedCount_ = 0;
  emit finished();
}

void MainFormAction::addNodeToRootNode(UIInfoDB& db, const NodeInfo::Ptr& node) {
  if (node == nullptr) return;
  NodeTree& list = NodeInfoAction::mainList(db);
  list.addChild(list.root(), node);
}
