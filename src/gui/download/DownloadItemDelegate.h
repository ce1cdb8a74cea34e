// Draws one line of the download list from its item: the thumbnail, the site
// icon and the title; below them what the state shows (the progress bar with
// the speed and downloaded size, the duration, format and size, the failure
// or the waiting mark); and on the right the buttons the state shows, which
// it presses and explains in tool tips. A click elsewhere selects the line;
// a right click asks for the list's context menu.
#pragma once

#include <QHash>
#include <QIcon>
#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

#include <optional>

#include "Download/DrogItemView.h"

class DownloadItemDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using Element = DrogItemView::Element;

  explicit DownloadItemDelegate(QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

  // The part of a line drawn in `cell` (the view's rectangle of the row).
  static QRect lineRect(const QRect& cell);
  // Where `item`'s element is drawn in a line drawn at `line`; the buttons
  // the state shows are packed to the right in a fixed order.
  static QRect elementRect(const DrogItemView& item, Element element, const QRect& line);
  // The button shown under `point`, if any.
  static std::optional<Element> buttonAt(const DrogItemView& item, const QRect& line, const QPoint& point);

 private:
  const QIcon& skinPicture(const QString& name) const;
  void paintSecondLine(QPainter* painter, const DrogItemView& item, const QRect& line, const QPalette& palette) const;
  void paintProgress(QPainter* painter, const DrogItemView& item, const QRect& rect, const QPalette& palette) const;
  void paintButtons(QPainter* painter, const DrogItemView& item, const QRect& line, const QModelIndex& index) const;
  static void press(DrogItemView& item, Element button);

  mutable QHash<QString, QIcon> pictures_;
  QPersistentModelIndex pressedIndex_;
  std::optional<Element> pressedButton_;
};
