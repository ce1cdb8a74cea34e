// Draws one item of the media list from the skin's row layout and turns
// clicks on its parts (check box, profile, audio stream, tags, remove, move
// up and down) into partClicked(). The output name is edited in place.
#pragma once

#include <QHash>
#include <QIcon>
#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

#include "widgets/ItemDefaultInfo.h"

struct MediaItemSummary;

class MediaItemDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  enum class Part { None, Check, Name, Audio, Profile, TagEdit, Remove, MoveUp, MoveDown };

  // `skin` must outlive the delegate.
  explicit MediaItemDelegate(const ItemDefaultInfo& skin, QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

  // The part of a row drawn at `row` under `point`.
  Part partAt(const QRect& row, const QPoint& point) const;
  // Where `part` is drawn in a row drawn at `row`.
  QRect partRect(Part part, const QRect& row) const;
  // The picture of a profile, by its skin name; a null icon when there is none.
  const QIcon& profilePicture(const QString& name) const;
  // The pointer left the list.
  void clearHover();

 signals:
  // `where` is the part's rectangle in the view's viewport.
  void partClicked(const QModelIndex& index, MediaItemDelegate::Part part, const QRect& where);
  void repaintNeeded(const QModelIndex& index);

 private:
  void paintButton(QPainter* painter, const QRect& row, const QModelIndex& index, Part part, const QIcon& normal,
                   const QIcon& hover, const QIcon& pressed) const;
  void paintProfile(QPainter* painter, const QRect& row, const QModelIndex& index, const MediaItemSummary& item,
                    const QPalette& palette) const;
  void paintAudio(QPainter* painter, const QRect& row, const QModelIndex& index, const MediaItemSummary& item,
                  const QPalette& palette) const;
  void setHover(const QModelIndex& index, Part part);

  const ItemDefaultInfo& skin_;
  mutable QHash<QString, QIcon> profilePictures_;
  QPersistentModelIndex hoverIndex_;
  Part hoverPart_ = Part::None;
  QPersistentModelIndex pressedIndex_;
  Part pressedPart_ = Part::None;
};
