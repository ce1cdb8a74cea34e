// Draws one row of the conversion list from the skin's row layout: the
// thumbnail, the output name, the progress bar, the status line with the
// times or the outcome, and the row's start or stop button, which it presses.
#pragma once

#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

#include "widgets/ItemDefaultInfo.h"

class ConvertView;

class ConversionRowDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  // `skin` must outlive the delegate.
  explicit ConversionRowDelegate(const ItemDefaultInfo& skin, QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

  // Where the row's start or stop button is drawn in a row drawn at `row`.
  QRect buttonRect(const QRect& row) const;

 private:
  void paintProgress(QPainter* painter, const QRect& rect, const ConvertView& row, const QPalette& palette) const;
  void paintButton(QPainter* painter, const QRect& row, const QModelIndex& index, const ConvertView& view) const;

  const ItemDefaultInfo& skin_;
  QIcon startImage_, startPressedImage_, stopImage_, stopPressedImage_;
  QPersistentModelIndex pressed_;
};
