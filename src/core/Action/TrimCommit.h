// What closing the trim window (or leaving a file for another) does to the
// main list: segments become items of their own, or, merged, the children of
// the source that is converted into one output; an untouched or restored
// full-length segment leaves or puts the source back as one plain item.
#pragma once

#include "Action/PlayVideoAction.h"
#include "Action/TrimSegmentList.h"
#include "ValueObject/NodeInfo.h"
#include "ValueObject/UIInfoDB.h"

class TrimFormController;

// The main window's side of trimming.
class TrimFormDelegate {
 public:
  virtual ~TrimFormDelegate() = default;
  // Remove the node's row from the list, and add one.
  virtual void deleteItemView(const NodeInfo::Ptr& /*node*/) {}
  virtual void addTrimItemView(const NodeInfo::Ptr& /*node*/) {}
  virtual void trimWindowClose(TrimFormController* /*controller*/) {}
};

class TrimCommit {
 public:
  // Applies the segments of `source` to the main list of `db`; thumbnails of
  // the segments are taken through `player`. Nothing happens without a
  // delegate or a source. The segment list is emptied when applied.
  static void addTrimNodeInfo(UIInfoDB& db, TrimFormDelegate* delegate, PlayVideoAction& player,
                              const NodeInfo::Ptr& source, TrimSegmentList& segments, bool merge);

 private:
  // The settings an item gets when its trim changes: full-frame crop, fresh effects and watermark.
  static void resetEdits(NodeInfo& node, const NodeInfo& frameSource);
  static void mergeSegments(UIInfoDB& db, TrimFormDelegate* delegate, const NodeInfo::Ptr& source,
                            const NodeInfo::List& segments);
  // The whole length a single segment must span to leave the file untrimmed.
  static int32_t untrimmedLength(const NodeInfo& source, const NodeInfo& segment);
  static bool restoresUntrimmed(const NodeInfo::Ptr& source, const NodeInfo::List& segments);
  static void addSegmentsAsItems(UIInfoDB& db, TrimFormDelegate* delegate, PlayVideoAction& player,
                                 const NodeInfo::Ptr& source, const NodeInfo::List& segments);
};
