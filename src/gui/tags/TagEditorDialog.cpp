#include "TagEditorDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "CommonClass/PlatformServices.h"

namespace {

using Field = MetaEditFormController::Field;

struct FieldRow {
  Field field;
  const char* label;
};

const FieldRow kMusicRows[] = {
    {Field::Title, "Title:"},       {Field::Artist, "Artist:"},       {Field::Album, "Album:"},
    {Field::AlbumArtist, "Album artist:"}, {Field::Genre, "Genre:"}, {Field::Composer, "Composer:"},
    {Field::Year, "Year:"},         {Field::Grouping, "Grouping:"},   {Field::Comment, "Comment:"},
};
const FieldRow kShowRows[] = {
    {Field::TvShowName, "Show:"}, {Field::TvSeason, "Season:"}, {Field::TvEpisode, "Episode:"},
    {Field::TvEpisodeId, "Episode ID:"}, {Field::Description, "Description:"},
};

bool isPicture(const QString& path) {
  return !QImageReader::imageFormat(path).isEmpty();
}

QString firstDroppedFile(const QMimeData* data) {
  if (data == nullptr || !data->hasUrls() || data->urls().isEmpty()) return {};
  return data->urls().first().toLocalFile();
}

}  // namespace

TagEditorDialog::TagEditorDialog(MetaEditFormController& controller, const NodeInfo::List& items,
                                 const NodeInfo::Ptr& selected, QWidget* parent)
    : QDialog(parent), controller_(controller) {
  setWindowTitle(tr("Tags"));
  setAcceptDrops(true);

  strip_ = new QListWidget(this);
  strip_->setMaximumWidth(200);
  for (const NodeInfo::Ptr& item : items) strip_->addItem(item->outputFilename());

  tabs_ = new QTabWidget(this);
  auto* music = new QWidget(tabs_);
  auto* musicForm = new QFormLayout(music);
  for (const FieldRow& row : kMusicRows) musicForm->addRow(tr(row.label), fieldEditor(row.field));
  auto* numbers = new QHBoxLayout;
  for (const auto& [field, label] : {std::pair{Field::TrackNum, "Track"}, std::pair{Field::TrackTotal, "of"},
                                     std::pair{Field::DiskNum, "Disc"}, std::pair{Field::DiskTotal, "of"}}) {
    numbers->addWidget(new QLabel(tr(label), music));
    numbers->addWidget(fieldEditor(field));
  }
  musicForm->addRow(QString(), numbers);
  tabs_->addTab(music, tr("Music"));
  auto* show = new QWidget(tabs_);
  auto* showForm = new QFormLayout(show);
  for (const FieldRow& row : kShowRows) showForm->addRow(tr(row.label), fieldEditor(row.field));
  tabs_->addTab(show, tr("TV show"));
  connect(tabs_, &QTabWidget::currentChanged, &controller_, &MetaEditFormController::selectTab);

  cover_ = new QLabel(this);
  cover_->setFixedSize(160, 160);
  cover_->setAlignment(Qt::AlignCenter);
  cover_->setFrameShape(QFrame::StyledPanel);
  cover_->setToolTip(tr("Drop a picture here"));
  auto* chooseCover = new QPushButton(tr("Choose Cover..."), this);
  auto* removeCover = new QPushButton(tr("Remove Cover"), this);
  connect(chooseCover, &QPushButton::clicked, this, &TagEditorDialog::chooseCover);
  connect(removeCover, &QPushButton::clicked, &controller_, &MetaEditFormController::removeThumbnail);
  auto* coverColumn = new QVBoxLayout;
  coverColumn->addWidget(cover_);
  coverColumn->addWidget(chooseCover);
  coverColumn->addWidget(removeCover);
  coverColumn->addStretch();

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Reset, this);
  connect(buttons->button(QDialogButtonBox::Reset), &QPushButton::clicked, &controller_,
          &MetaEditFormController::resetButtonClick);
  connect(buttons, &QDialogButtonBox::accepted, &controller_, &MetaEditFormController::okButtonClick);
  connect(buttons, &QDialogButtonBox::rejected, &controller_, &MetaEditFormController::cancelButtonClick);

  auto* body = new QHBoxLayout;
  body->addWidget(strip_);
  body->addWidget(tabs_, 1);
  body->addLayout(coverColumn);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(body);
  layout->addWidget(buttons);

  connect(&controller_, &MetaEditFormController::formChanged, this, &TagEditorDialog::showFields);
  connect(&controller_, &MetaEditFormController::coverChanged, this, &TagEditorDialog::showCover);
  connect(&controller_, &MetaEditFormController::windowClosed, this, &QDialog::accept);
  connect(strip_, &QListWidget::currentRowChanged, this, [this, items](int row) {
    if (!showing_ && row >= 0 && row < items.size()) controller_.itemViewClick(items[row]);
  });
  controller_.showWindowModal(items, selected);
  showing_ = true;
  strip_->setCurrentRow(static_cast<int>(items.indexOf(controller_.currentNode())));
  showing_ = false;
  showFields();
  showCover(controller_.imagePath());
}

QWidget* TagEditorDialog::fieldEditor(Field field) {
  if (field == Field::Genre) {
    genre_ = new QComboBox(this);
    genre_->setEditable(true);
    genre_->addItems(controller_.genreList());
    connect(genre_, &QComboBox::currentTextChanged, this, [this](const QString& text) {
      if (!showing_) controller_.setFieldText(Field::Genre, text);
    });
    return genre_;
  }
  if (field == Field::Description) {
    description_ = new QPlainTextEdit(this);
    connect(description_, &QPlainTextEdit::textChanged, this, [this] {
      if (!showing_) controller_.setFieldText(Field::Description, description_->toPlainText());
    });
    return description_;
  }
  auto* line = new QLineEdit(this);
  if (MetaEditFormController::isNumberField(field)) line->setMaximumWidth(64);
  lines_[static_cast<size_t>(field)] = line;
  connect(line, &QLineEdit::textEdited, this, [this, field, line](const QString& text) {
    // A number field keeps its last good text when the formatter refuses.
    if (!controller_.setFieldText(field, text)) line->setText(controller_.fieldText(field));
  });
  return line;
}

void TagEditorDialog::showFields() {
  showing_ = true;
  for (int index = 0; index < MetaEditFormController::kFieldCount; ++index) {
    if (QLineEdit* line = lines_[static_cast<size_t>(index)]) line->setText(controller_.fieldText(Field(index)));
  }
  genre_->setCurrentText(controller_.fieldText(Field::Genre));
  description_->setPlainText(controller_.fieldText(Field::Description));
  tabs_->setCurrentIndex(controller_.selectedTab());
  showing_ = false;
}

void TagEditorDialog::showCover(const QString& path) {
  const QPixmap picture(path);
  if (picture.isNull()) {
    cover_->setPixmap({});
    cover_->setText(tr("No cover\n(drop a picture)"));
    return;
  }
  cover_->setPixmap(picture.scaled(cover_->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void TagEditorDialog::chooseCover() {
  FilePanels* panels = PlatformServices::panels();
  if (panels == nullptr) return;
  const QString path = panels->openSingleFile({QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jpeg"),
                                               QStringLiteral("bmp"), QStringLiteral("gif")});
  if (!path.isEmpty()) controller_.kmvEditImageDidChange(path);
}

void TagEditorDialog::dragEnterEvent(QDragEnterEvent* event) {
  if (isPicture(firstDroppedFile(event->mimeData()))) event->acceptProposedAction();
}

void TagEditorDialog::dropEvent(QDropEvent* event) {
  const QString path = firstDroppedFile(event->mimeData());
  if (!isPicture(path)) return;
  controller_.kmvEditImageDidChange(path);
  event->acceptProposedAction();
}

void TagEditorDialog::reject() {
  if (controller_.windowShouldClose()) QDialog::reject();
}
