// The download list's container: its items top to bottom, which it owns,
// the selected one, insertion and deletion with their announcements, so that
// a view can follow it.
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

#include "Download/DrogItemView.h"

class DroglineView;

// What the container tells its owner. Each operation is optional.
class DroglineViewDelegate {
 public:
  virtual ~DroglineViewDelegate() = default;
  // `item` has been taken off the list; it is released a moment later.
  virtual void droglineViewDidRemoveItemView(DroglineView* /*list*/, DrogItemView* /*item*/) {}
  // The user asked for the list's context menu.
  virtual void DroglineViewDidReceiveRightMouseEvent(DroglineView* /*list*/) {}
};

class DroglineView : public QObject {
  Q_OBJECT

 public:
  // How long a deleted item lives on after leaving the list.
  static constexpr int kReleaseDelayMs = 500;

  explicit DroglineView(QObject* parent = nullptr);
  // Releases every item, also those deleted a moment ago.
  ~DroglineView() override;

  void setDelegate(DroglineViewDelegate* delegate) { delegate_ = delegate; }

  // Inserts `item` at `index` (0 is the top) and takes it over. The first
  // item of an empty list becomes the selected one.
  void addItemView(DrogItemView* item, int index);
  const QList<DrogItemView*>& getChildItem() const { return items_; }
  // The item showing `task` (the same object), or nullptr.
  DrogItemView* getViewById(const VideoInfoObject* task) const;
  int indexOf(const DrogItemView* item) const { return static_cast<int>(items_.indexOf(item)); }

  DrogItemView* getSeleteView() const { return selected_; }
  // Selects `item` (nullptr: none); only the selected item shows its selection background.
  void setSeleteView(DrogItemView* item);

  // Stops the item's analysis and download, takes it off the list, selects
  // the item now at its place (or else the last one), tells the delegate and
  // releases the item shortly afterwards.
  void deleteSeleteView(DrogItemView* item);
  // Takes every item off the list and releases them, telling nobody.
  void removeAllItems();

  // Asks the view to show the top of the list.
  void scrollPointToOrigin() { emit scrollToOriginRequested(); }
  // A right mouse click on the list.
  void rightMouseDown();

 signals:
  void itemAboutToBeInserted(int index);
  void itemInserted(int index);
  void itemAboutToBeRemoved(int index);
  void itemRemoved(int index);
  void aboutToRemoveAll();
  void allRemoved();
  // Something the item at `index` shows has changed.
  void itemChanged(int index);
  void selectionChanged(DrogItemView* selected);
  void scrollToOriginRequested();

 private:
  void release(DrogItemView* item);

  QList<DrogItemView*> items_;
  // Items taken off the list and not yet released.
  QList<QPointer<DrogItemView>> releasing_;
  QPointer<DrogItemView> selected_;
  DroglineViewDelegate* delegate_ = nullptr;
};
