// The tag window's logic: which item is on screen, the text of every field,
// the cover picture and the tab, with the commands of its buttons. The window
// only draws this state and forwards the user's input.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>

#include "Action/KMVIntFormatter.h"
#include "ValueObject/MediaMetaData.h"
#include "ValueObject/NodeInfo.h"

class MetaEditFormController;

// Told when the tag window closes.
class MetaEditFormDelegate {
 public:
  virtual ~MetaEditFormDelegate() = default;
  virtual void metaEditWindowClose(MetaEditFormController* /*controller*/) {}
};

class MetaEditFormController : public QObject {
  Q_OBJECT

 public:
  enum class Field {
    Title,
    Comment,
    Artist,
    Genre,
    Composer,
    Album,
    AlbumArtist,
    TrackNum,
    TrackTotal,
    DiskNum,
    DiskTotal,
    Grouping,
    Year,
    TvShowName,
    TvSeason,
    TvEpisode,
    TvEpisodeId,
    Description,
  };
  static constexpr int kFieldCount = static_cast<int>(Field::Description) + 1;
  // Track and disc numbers are 16-bit in the tag formats that store them as numbers.
  static constexpr int32_t kMaximumNumber = 65535;

  explicit MetaEditFormController(QObject* parent = nullptr);

  void setDelegate(MetaEditFormDelegate* delegate) { delegate_ = delegate; }

  // Opens the window on the list's items and shows `selected` (the first
  // item when null).
  void showWindowModal(const NodeInfo::List& items, const NodeInfo::Ptr& selected = nullptr);
  bool isShown() const { return shown_; }
  const NodeInfo::List& items() const { return items_; }
  const NodeInfo::Ptr& currentNode() const { return currentNode_; }

  // Saves the item on screen, then shows `node`'s tags.
  void itemViewClick(const NodeInfo::Ptr& node);
  // Shows the current item's `metaData`.
  void displayFormWithMetaData();
  // Puts the fields into the current item's `metaData`. A total is taken
  // only when it is above its current number; otherwise the stored total stays.
  void saveMetaData();
  void setThumbnailWithPath(const QString& path);
  void removeThumbnail();
  // Shows the tags as read from the item's file; "OK" saves them.
  void resetButtonClick();
  void okButtonClick();
  // Closes without saving the item on screen.
  void cancelButtonClick();
  void selectTab(int index);
  // The cover drop target took a picture file.
  void kmvEditImageDidChange(const QString& imagePath);
  // Closing the window by its title bar: as "Cancel".
  bool windowShouldClose();

  QString fieldText(Field field) const { return fields_[static_cast<size_t>(field)]; }
  // Input from the window. The number fields refuse what their formatter
  // refuses and keep their text; the answer says whether the text was taken.
  bool setFieldText(Field field, const QString& text);
  static bool isNumberField(Field field);

  // The genre choices; genreIndex() is the entry matching the genre field,
  // -1 when the genre is typed text.
  const QStringList& genreList() const { return genreList_; }
  void setGenreList(const QStringList& genres) { genreList_ = genres; }
  int genreIndex() const { return static_cast<int>(genreList_.indexOf(fieldText(Field::Genre))); }

  // The cover picture on screen; empty when cleared.
  const QString& imagePath() const { return imagePath_; }
  int selectedTab() const { return selectedTab_; }

 signals:
  // Every field was filled anew.
  void formChanged();
  // The cover shows the picture at `imagePath`, or nothing when it is empty.
  void coverChanged(const QString& imagePath);
  void tabChanged(int index);
  void windowClosed();

 private:
  void display(const MediaMetaData& tags);
  void setField(Field field, const QString& text) { fields_[static_cast<size_t>(field)] = text; }
  void closeWindow();

  MetaEditFormDelegate* delegate_ = nullptr;
  NodeInfo::List items_;
  NodeInfo::Ptr currentNode_;
  bool shown_ = false;
  std::array<QString, kFieldCount> fields_;
  QStringList genreList_;
  QString imagePath_;
  int selectedTab_ = 0;
  KMVIntFormatter numberFormatter_{kMaximumNumber};
};
