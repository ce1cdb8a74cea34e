#include "MediaItemDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include "Action/MediaItemSummary.h"
#include "CommonClass/StandardPaths.h"
#include "main/MediaListModel.h"
#include "widgets/RowPainting.h"
#include "widgets/SkinImage.h"

namespace {

using RowPainting::drawIcon;
using RowPainting::drawText;
using Part = MediaItemDelegate::Part;

NodeInfo::Ptr nodeOf(const QModelIndex& index) { return index.data(MediaListModel::NodeRole).value<NodeInfo::Ptr>(); }

const char* toolTipOf(Part part) {
  switch (part) {
    case Part::Check:
      return "Tick to merge or apply to several items";
    case Part::Name:
      return "Output name (double-click or F2 to rename)";
    case Part::Audio:
      return "Audio stream";
    case Part::Profile:
      return "Output profile";
    case Part::TagEdit:
      return "Edit tags";
    case Part::Remove:
      return "Remove from the list";
    case Part::MoveUp:
      return "Move up";
    case Part::MoveDown:
      return "Move down";
    case Part::None:
      break;
  }
  return nullptr;
}

}  // namespace

MediaItemDelegate::MediaItemDelegate(const ItemDefaultInfo& skin, QObject* parent)
    : QStyledItemDelegate(parent), skin_(skin) {}

QSize MediaItemDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
  return {ItemDefaultInfo::kDesignWidth, ItemDefaultInfo::kRowHeight};
}

QRect MediaItemDelegate::partRect(Part part, const QRect& row) const {
  switch (part) {
    case Part::Check:
      return ItemDefaultInfo::placed(skin_.controllRect, row);
    case Part::Name:
      return ItemDefaultInfo::placed(skin_.videoNameRect, row);
    case Part::Audio:
      return ItemDefaultInfo::placed(skin_.audioRect, row);
    case Part::Profile:
      return ItemDefaultInfo::placed(skin_.profileImageRect, row);
    case Part::TagEdit:
      return ItemDefaultInfo::placed(skin_.metaEditButtonRect, row);
    case Part::Remove:
      return ItemDefaultInfo::placed(skin_.closeButtonRect, row);
    case Part::MoveUp:
      return ItemDefaultInfo::placed(skin_.preButtonRect, row);
    case Part::MoveDown:
      return ItemDefaultInfo::placed(skin_.nextButtonRect, row);
    case Part::None:
      break;
  }
  return {};
}

MediaItemDelegate::Part MediaItemDelegate::partAt(const QRect& row, const QPoint& point) const {
  for (Part part : {Part::Check, Part::TagEdit, Part::Remove, Part::MoveUp, Part::MoveDown, Part::Profile,
                    Part::Audio, Part::Name}) {
    if (partRect(part, row).contains(point)) return part;
  }
  return Part::None;
}

void MediaItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const NodeInfo::Ptr node = nodeOf(index);
  if (node == nullptr) return;
  const MediaItemSummary item = MediaItemSummary::of(*node);
  const QRect row = option.rect.adjusted(4, 2, -4, -2);
  const QPalette& palette = option.palette;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);

  RowPainting::drawCard(painter, row, option.state & QStyle::State_Selected, palette, skin_.bgImage);

  const bool hoverCheck = hoverIndex_ == index && hoverPart_ == Part::Check;
  drawIcon(painter, partRect(Part::Check, row),
           node->isSelected() ? skin_.controllHightImage : (hoverCheck ? skin_.controllMoveImage : skin_.controllImage));
  if (item.childCount > 0) drawIcon(painter, ItemDefaultInfo::placed(skin_.expandRect, row), skin_.expandImage);

  RowPainting::drawThumbnail(painter, ItemDefaultInfo::placed(skin_.videoImageRect, row), item.thumbnailPath,
                             item.hasVideo ? skin_.videoImage : skin_.videoImage2);
  drawIcon(painter, ItemDefaultInfo::placed(skin_.videoIcoRect, row), item.hasVideo ? skin_.videoIco : skin_.audioIco);
  drawText(painter, partRect(Part::Name, row), item.name, palette, QPalette::Text, true);

  drawIcon(painter, ItemDefaultInfo::placed(skin_.timeIcoRect, row), skin_.timeIco);
  drawText(painter, ItemDefaultInfo::placed(skin_.timeRect, row), item.duration, palette);
  if (!item.resolution.isEmpty()) {
    drawIcon(painter, ItemDefaultInfo::placed(skin_.resolutionIcoRect, row), skin_.resolutionIco);
    drawText(painter, ItemDefaultInfo::placed(skin_.resolutionRect, row), item.resolution, palette);
  }
  drawIcon(painter, ItemDefaultInfo::placed(skin_.sizeIcoRect, row), skin_.sizeIco);
  drawText(painter, ItemDefaultInfo::placed(skin_.sizeRect, row), item.size, palette);

  paintAudio(painter, row, index, item, palette);
  paintProfile(painter, row, index, item, palette);
  paintButton(painter, row, index, Part::TagEdit, skin_.metaEditImage, skin_.metaEditMoveImage,
              skin_.metaEditHightImage);
  paintButton(painter, row, index, Part::Remove, skin_.closeImage, skin_.closeMoveImage, skin_.closeHightImage);
  paintButton(painter, row, index, Part::MoveUp, skin_.preButtonImage, skin_.preButtonMoveImage,
              skin_.preButtonHightImage);
  paintButton(painter, row, index, Part::MoveDown, skin_.nextButtonImage, skin_.nextButtonMoveImage,
              skin_.nextButtonHightImage);
  painter->restore();
}

void MediaItemDelegate::paintButton(QPainter* painter, const QRect& row, const QModelIndex& index, Part part,
                                    const QIcon& normal, const QIcon& hover, const QIcon& pressed) const {
  const QIcon* look = &normal;
  if (pressedIndex_ == index && pressedPart_ == part) {
    look = &pressed;
  } else if (hoverIndex_ == index && hoverPart_ == part) {
    look = &hover;
  }
  drawIcon(painter, partRect(part, row), *look);
}

void MediaItemDelegate::paintAudio(QPainter* painter, const QRect& row, const QModelIndex& index,
                                   const MediaItemSummary& item, const QPalette& palette) const {
  const QRect field = partRect(Part::Audio, row);
  drawIcon(painter, ItemDefaultInfo::placed(skin_.audioIcoRect, row), skin_.audioIco);
  if (item.audioStreams.isEmpty()) {
    drawText(painter, field.adjusted(6, 0, 0, 0), tr("No audio stream"), palette, QPalette::PlaceholderText);
    return;
  }
  const bool hot = hoverIndex_ == index && hoverPart_ == Part::Audio;
  drawIcon(painter, field, hot ? skin_.audioHotBgImage : skin_.audioBgImage);
  drawText(painter, field.adjusted(8, 0, -22, 0), item.audioStreams.value(item.selectedAudio), palette);
  drawIcon(painter, QRect(field.right() - 19, field.center().y() - 7, 14, 14), skin_.buttonImage);
}

void MediaItemDelegate::paintProfile(QPainter* painter, const QRect& row, const QModelIndex& index,
                                     const MediaItemSummary& item, const QPalette& palette) const {
  const QRect chip = partRect(Part::Profile, row);
  const bool hot = hoverIndex_ == index && hoverPart_ == Part::Profile;
  drawIcon(painter, chip, hot ? skin_.profileHightImage : skin_.profileImage);
  const QRect picture(chip.left() + 8, chip.top() + 8, 44, 44);
  drawIcon(painter, picture, profilePicture(item.profileImage));
  const QRect button = ItemDefaultInfo::placed(skin_.buttonRect, row);
  const QRect text(picture.right() + 6, chip.top() + 4, button.left() - picture.right() - 8, chip.height() - 8);
  QFont font = painter->font();
  font.setPointSizeF(font.pointSizeF() * 0.9);
  painter->setFont(font);
  painter->setPen(palette.color(QPalette::ButtonText));
  painter->drawText(text, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextWordWrap, item.profileName);
  drawIcon(painter, button, hot ? skin_.buttonMoveImage : skin_.buttonImage);
}

const QIcon& MediaItemDelegate::profilePicture(const QString& name) const {
  auto found = profilePictures_.find(name);
  if (found == profilePictures_.end()) {
    const QString path = StandardPaths::pathForResource(QStringLiteral("skin/classical/profile/%1.svg").arg(name));
    found = profilePictures_.insert(name, SkinImage::load(path, QApplication::palette()));
  }
  return *found;
}

QWidget* MediaItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                         const QModelIndex& /*index*/) const {
  auto* editor = new QLineEdit(parent);
  editor->setFrame(true);
  editor->setMaxLength(255);
  QFont font = editor->font();
  font.setBold(true);
  editor->setFont(font);
  return editor;
}

void MediaItemDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                             const QModelIndex& /*index*/) const {
  editor->setGeometry(partRect(Part::Name, option.rect.adjusted(4, 2, -4, -2)).adjusted(-3, -1, 3, 1));
}

void MediaItemDelegate::setHover(const QModelIndex& index, Part part) {
  if (hoverIndex_ == index && hoverPart_ == part) return;
  const QPersistentModelIndex before = hoverIndex_;
  hoverIndex_ = index;
  hoverPart_ = part;
  if (before.isValid()) emit repaintNeeded(before);
  if (index.isValid()) emit repaintNeeded(index);
}

void MediaItemDelegate::clearHover() { setHover({}, Part::None); }

bool MediaItemDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) {
  const QRect row = option.rect.adjusted(4, 2, -4, -2);
  switch (event->type()) {
    case QEvent::MouseMove:
      setHover(index, partAt(row, static_cast<QMouseEvent*>(event)->position().toPoint()));
      return false;
    case QEvent::MouseButtonPress: {
      auto* mouse = static_cast<QMouseEvent*>(event);
      const Part part = partAt(row, mouse->position().toPoint());
      if (mouse->button() != Qt::LeftButton || part == Part::None || part == Part::Name) return false;
      pressedIndex_ = index;
      pressedPart_ = part;
      emit repaintNeeded(index);
      return false;  // the view still makes the row current
    }
    case QEvent::MouseButtonRelease: {
      auto* mouse = static_cast<QMouseEvent*>(event);
      const Part pressed = pressedIndex_ == index ? pressedPart_ : Part::None;
      pressedIndex_ = QPersistentModelIndex();
      pressedPart_ = Part::None;
      emit repaintNeeded(index);
      if (pressed == Part::None || partAt(row, mouse->position().toPoint()) != pressed) return false;
      emit partClicked(index, pressed, partRect(pressed, row));
      return true;
    }
    case QEvent::MouseButtonDblClick: {
      // A double click on a button is two clicks, not a rename.
      const Part part = partAt(row, static_cast<QMouseEvent*>(event)->position().toPoint());
      return part != Part::None && part != Part::Name;
    }
    default:
      return QStyledItemDelegate::editorEvent(event, model, option, index);
  }
}

bool MediaItemDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
  const Part part = partAt(option.rect.adjusted(4, 2, -4, -2), event->pos());
  QString text;
  if (part == Part::Name || part == Part::None) {
    text = index.data(Qt::ToolTipRole).toString();
  } else {
    text = tr(toolTipOf(part));
  }
  QToolTip::showText(event->globalPos(), text, view);
  return true;
}
