// The segments of the node being trimmed, as the segment table shows them,
// with their numbering and the segments deleted since the window opened. A
// segment is a copy of the source's settings with its own trim times; the
// table is never left empty.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

#include "ValueObject/NodeInfo.h"

class TrimSegmentList {
 public:
  // Identifiers of the table's columns, in order.
  static const QStringList& columns();
  static constexpr const char* kSegmentIcon = "iconVideoSegment";

  // A new full-length segment of `source`, numbered with the counter, which
  // then counts on.
  NodeInfo::Ptr creatNewSegment(const NodeInfo::Ptr& source);
  // Loads the segments of `source`: its children (numbering continues after
  // the highest number used), or one full-length segment for a file without.
  // A merged node is taken as trimmed, so that its children are segments.
  void initTableView(const NodeInfo::Ptr& source);
  // Deletes the segment at `row` (only segments being edited); a fresh
  // full-length segment replaces the last one. False when nothing was deleted.
  bool deleteSegment(const NodeInfo::Ptr& source, int row);
  // Forgets everything: no segments, nothing deleted, numbering from 1.
  void clear();
  // Every segment's length (end - start) becomes its media length, as the table shows it.
  void updateDurations();

  // The text of a cell: the output name, or a time as "%02d:%02d:%02d".
  QString cellText(int row, const QString& column) const;

  const NodeInfo::List& curVideoChildren() const { return curVideoChildren_; }
  NodeInfo::List& deleteNodeData() { return deleteNodeData_; }
  void clearSegments() { curVideoChildren_.clear(); }
  int count() const { return static_cast<int>(curVideoChildren_.size()); }
  NodeInfo::Ptr at(int row) const { return curVideoChildren_.value(row); }

 private:
  NodeInfo::List curVideoChildren_;
  NodeInfo::List deleteNodeData_;
  int32_t curVideoAddChildrenNum_ = 1;
};
