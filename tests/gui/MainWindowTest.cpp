// The main window off screen: real files added through the pooled adding,
// the list's model checked by Qt's own model tester while it changes, clicks
// on the painted rows, renaming in place, and a real conversion shown in the
// conversion list.
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <functional>

#include "Action/AboutBox.h"
#include "CommonClass/GlobalSettings.h"
#include "GeneratedMedia.h"
#include "Profile/KMVProfileCatalog.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"
#include "about/AboutDialog.h"
#include "download/DownloadWindow.h"
#include "editor/EditorDialog.h"
#include "main/ConversionRowDelegate.h"
#include "main/MainWindow.h"
#include "main/MediaItemDelegate.h"
#include "main/PreviewPanel.h"
#include "options/OptionsDialog.h"
#include "properties/PropertiesDialog.h"
#include "settings/SettingsDialog.h"
#include "split/SplitDialog.h"
#include "tags/TagEditorDialog.h"
#include "trim/TrimDialog.h"

namespace {

class MainWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"one.mp4", "two.mp4", "three.mp4"}) media.clip(QLatin1String(name), 1);
    TestEnvironment::resetApplicationState();
    PlatformServices::install(&alerts, nullptr, &workspace);
    window = std::make_unique<MainWindow>(db);
    window->startUp();
    window->controller().setOutputFolder(media.path(QStringLiteral("out")));
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
  }
  void TearDown() override {
    window.reset();
    PlatformServices::install(nullptr, nullptr, nullptr);
    TestEnvironment::resetApplicationState();
  }

  void addClips(const QStringList& names) {
    QStringList paths;
    for (const QString& name : names) paths.append(media.path(name));
    QSignalSpy finished(&window->controller(), &MainFormController::addingFinished);
    window->addFiles(paths);
    ASSERT_TRUE(finished.wait(30000));
  }

  QStringList rowNames() const {
    QStringList names;
    QAbstractItemModel* model = window->mediaList()->model();
    for (int row = 0; row < model->rowCount(); ++row) names.append(model->index(row, 0).data().toString());
    return names;
  }

  // Clicks the centre of a painted part of a row of the media list.
  void clickPart(int row, MediaItemDelegate::Part part) {
    QListView* list = window->mediaList();
    auto* delegate = static_cast<MediaItemDelegate*>(list->itemDelegate());
    const QRect rowRect = list->visualRect(list->model()->index(row, 0)).adjusted(4, 2, -4, -2);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, delegate->partRect(part, rowRect).center());
  }

  testmedia::Folder media;
  RecordingAlertPresenter alerts;
  RecordingWorkspace workspace;
  UIInfoDB db;
  std::unique_ptr<MainWindow> window;
};

QToolButton* toolButtonNamed(QWidget* window, const QString& toolTip) {
  for (QToolButton* button : window->findChildren<QToolButton*>()) {
    if (button->toolTip() == toolTip) return button;
  }
  return nullptr;
}

QPushButton* buttonNamed(QWidget* window, const QString& text) {
  for (QPushButton* button : window->findChildren<QPushButton*>()) {
    if (button->text() == text) return button;
  }
  return nullptr;
}

TEST_F(MainWindowTest, TheListModelFollowsEveryChangeOfTheList) {
  QAbstractItemModelTester tester(window->mediaList()->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  QPushButton* convert = buttonNamed(window.get(), QStringLiteral("Convert"));
  ASSERT_NE(convert, nullptr);
  EXPECT_FALSE(convert->isEnabled()) << "nothing to convert yet";

  addClips({"one.mp4", "two.mp4", "three.mp4"});
  EXPECT_EQ(rowNames(), (QStringList{"one", "two", "three"}));
  EXPECT_TRUE(convert->isEnabled());

  clickPart(0, MediaItemDelegate::Part::MoveDown);
  EXPECT_EQ(rowNames(), (QStringList{"two", "one", "three"}));
  clickPart(2, MediaItemDelegate::Part::MoveUp);
  EXPECT_EQ(rowNames(), (QStringList{"two", "three", "one"}));
  clickPart(1, MediaItemDelegate::Part::Remove);
  EXPECT_EQ(rowNames(), (QStringList{"two", "one"}));

  const NodeInfo::Ptr first = window->controller().videoData().front();
  const bool ticked = first->isSelected();
  clickPart(0, MediaItemDelegate::Part::Check);
  EXPECT_NE(first->isSelected(), ticked);
  clickPart(0, MediaItemDelegate::Part::Check);

  window->controller().mergeNode(window->controller().videoData());
  EXPECT_EQ(rowNames(), QStringList{"Merge 1"});
  window->controller().clearAllFile();
  EXPECT_TRUE(rowNames().isEmpty());
  EXPECT_FALSE(convert->isEnabled());
}

TEST_F(MainWindowTest, RenamingInPlaceKeepsTheRulesOfNames) {
  addClips({"one.mp4"});
  QListView* list = window->mediaList();
  list->setCurrentIndex(list->model()->index(0, 0));

  const auto rename = [&](const QString& typed) {
    QTest::keyClick(list, Qt::Key_F2);
    QLineEdit* editor = nullptr;
    for (QLineEdit* open : list->findChildren<QLineEdit*>()) {
      if (open->isVisible()) editor = open;
    }
    ASSERT_NE(editor, nullptr) << "F2 opens no editor";
    editor->selectAll();
    QTest::keyClicks(editor, typed);
    QTest::keyClick(editor, Qt::Key_Return);
    // The view commits and closes the editor from the event loop.
    QCoreApplication::processEvents();
  };
  rename(QStringLiteral("holiday?"));
  EXPECT_EQ(rowNames(), QStringList{"one"});
  ASSERT_EQ(alerts.alerts.size(), 1u);
  EXPECT_EQ(alerts.alerts[0].informativeText, QStringLiteral("Contains invalid character."));

  rename(QStringLiteral("  holiday 2024 "));
  EXPECT_EQ(rowNames(), QStringList{"holiday 2024"});
  EXPECT_EQ(window->controller().videoData().front()->outputFilename(), QStringLiteral("holiday 2024"));
  rename(QStringLiteral("   "));
  EXPECT_EQ(rowNames(), QStringList{"holiday 2024"}) << "a blank name puts the old one back";
  EXPECT_EQ(alerts.alerts.size(), 1u);
}

TEST_F(MainWindowTest, AConversionShowsItsRowsThenReturnsToTheList) {
  // An empty list shows how to add files in its place.
  QPushButton* welcomeAdd = buttonNamed(window.get(), QStringLiteral("Add Files..."));
  EXPECT_TRUE(welcomeAdd->isVisible());
  EXPECT_FALSE(window->mediaList()->isVisible());
  addClips({"one.mp4", "two.mp4"});
  EXPECT_FALSE(welcomeAdd->isVisible());
  QSignalSpy states(&window->controller(), &MainFormController::windowStateChanged);
  QTest::mouseClick(buttonNamed(window.get(), QStringLiteral("Convert")), Qt::LeftButton);
  ASSERT_TRUE(window->controller().isConverting());
  EXPECT_TRUE(window->conversionList()->isVisible());
  EXPECT_FALSE(window->mediaList()->isVisible());
  EXPECT_EQ(window->conversionList()->model()->rowCount(), 2);

  while (window->controller().isConverting()) ASSERT_TRUE(states.wait(60000));
  EXPECT_TRUE(window->mediaList()->isVisible());
  ASSERT_FALSE(alerts.alerts.empty());
  EXPECT_EQ(alerts.alerts.back().informativeText, QStringLiteral("Conversion complete!"));
  EXPECT_EQ(workspace.revealed, QStringList{media.path(QStringLiteral("out"))});
  QAbstractItemModel* rows = window->conversionList()->model();
  for (int row = 0; row < rows->rowCount(); ++row) {
    EXPECT_TRUE(rows->index(row, 0).data(Qt::ToolTipRole).toString().startsWith(QStringLiteral("Finished in"))) << row;
  }
  // Where screenshots are asked for, the window is kept as a picture.
  if (const QString folder = qEnvironmentVariable("VC_SCREENSHOT_DIR"); !folder.isEmpty()) {
    window->grab().save(folder + QStringLiteral("/main-window.png"));
    window->conversionList()->resize(window->mediaList()->size());
    window->conversionList()->grab().save(folder + QStringLiteral("/conversion-list.png"));
  }
}

TEST_F(MainWindowTest, ThePreviewPlaysTheCurrentItemAndSavesNumberedSnapshots) {
  photoOutputPath = media.path(QStringLiteral("photos"));
  photoOutputFormat = QStringLiteral("jpg");
  addClips({"one.mp4", "two.mp4"});
  window->mediaList()->setCurrentIndex(window->mediaList()->model()->index(1, 0));
  PreviewPanel* preview = window->preview();
  QTest::mouseClick(toolButtonNamed(preview, QStringLiteral("Play")), Qt::LeftButton);
  ASSERT_TRUE(preview->player().isPlaying());
  EXPECT_DOUBLE_EQ(preview->player().sliderMaximum(), 1.0);
  QTest::mouseClick(toolButtonNamed(preview, QStringLiteral("Pause")), Qt::LeftButton);
  ASSERT_FALSE(preview->player().getImage().isNull());

  QToolButton* snapshot = toolButtonNamed(preview, QStringLiteral("Take a snapshot"));
  QTest::mouseClick(snapshot, Qt::LeftButton);
  QTest::mouseClick(snapshot, Qt::LeftButton);
  for (const char* name : {"00001.jpg", "00002.jpg"}) {
    EXPECT_EQ(testmedia::ffprobe(media.path(QStringLiteral("photos/") + QLatin1String(name)),
                                 QStringLiteral("streams"))["width"],
              "320")
        << name;
  }
  if (const QString folder = qEnvironmentVariable("VC_SCREENSHOT_DIR"); !folder.isEmpty()) {
    window->grab().save(folder + QStringLiteral("/main-window-preview.png"));
  }
  // Playing goes on to the end by itself, and stops there.
  QTest::mouseClick(toolButtonNamed(preview, QStringLiteral("Play")), Qt::LeftButton);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !preview->player().isPlaying(); }, 20000));
  EXPECT_EQ(preview->player().timeLabel(), QLatin1String(PlayVideoAction::kStoppedLabel));

  // A conversion stops the preview.
  QTest::mouseClick(toolButtonNamed(preview, QStringLiteral("Play")), Qt::LeftButton);
  ASSERT_TRUE(preview->player().isPlaying());
  QTest::mouseClick(buttonNamed(window.get(), QStringLiteral("Convert")), Qt::LeftButton);
  EXPECT_FALSE(preview->player().isPlaying());
  window->controller().cancelAllConvert();
}

// Where screenshots are asked for, a window is kept as a picture.
void keepPicture(QWidget* window, const QString& name) {
  if (const QString folder = qEnvironmentVariable("VC_SCREENSHOT_DIR"); !folder.isEmpty()) {
    window->grab().save(folder + QLatin1Char('/') + name);
  }
}

TEST_F(MainWindowTest, TheSmallWindowsOpenOnTheCurrentItemAndTheOptionsAreStored) {
  addClips({"one.mp4"});
  const NodeInfo::Ptr item = window->controller().videoData().front();
  const KMVProfileCatalog::Entry entry =
      KMVProfileCatalog::sharedCatalog().profileNamed(item->curProfileSetting().profileName());
  ASSERT_NE(entry, nullptr);
  SettingsDialog settings(*entry, item, window.get());
  settings.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&settings));
  for (QComboBox* list : settings.findChildren<QComboBox*>()) EXPECT_GT(list->count(), 0);
  keepPicture(&settings, QStringLiteral("settings.png"));

  MetaEditFormController tags;
  TagEditorDialog tagEditor(tags, window->controller().videoData(), item, window.get());
  tagEditor.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&tagEditor));
  keepPicture(&tagEditor, QStringLiteral("tags.png"));

  OptionsDialog options(window.get());
  options.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&options));
  keepPicture(&options, QStringLiteral("options.png"));
  QComboBox* format = options.findChild<QComboBox*>();
  format->setCurrentIndex(format->findData(QStringLiteral("png")));
  options.accept();
  EXPECT_EQ(options.result(), QDialog::Accepted);
  EXPECT_EQ(photoOutputFormat, QStringLiteral("png"));

  PropertiesDialog properties(*item, window.get());
  properties.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&properties));
  keepPicture(&properties, QStringLiteral("properties.png"));
  EXPECT_TRUE(properties.text().startsWith(QStringLiteral("File\nName: one.mp4\n")));
  QTest::mouseClick(buttonNamed(&properties, QStringLiteral("Copy")), Qt::LeftButton);
  EXPECT_EQ(QApplication::clipboard()->text(), properties.text());

  AboutDialog about(AboutBox::read(), window.get());
  about.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&about));
  keepPicture(&about, QStringLiteral("about.png"));
  QLabel* home = nullptr;
  for (QLabel* label : about.findChildren<QLabel*>()) {
    if (label->accessibleName() == QStringLiteral("Home page")) home = label;
  }
  ASSERT_NE(home, nullptr);
  emit home->linkActivated(AboutBox::read().homeAddress);
  EXPECT_EQ(workspace.opened, QStringList{AboutBox::read().homeAddress});
}

TEST_F(MainWindowTest, TheDownloadWindowOpensFromTheMenuAndWhatItImportsJoinsTheList) {
  QAction* open = nullptr;
  for (QAction* action : window->findChildren<QAction*>()) {
    if (action->text() == QStringLiteral("&Download Videos...")) open = action;
  }
  ASSERT_NE(open, nullptr);
  open->trigger();
  auto* downloads = window->findChild<DownloadWindow*>();
  ASSERT_NE(downloads, nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(downloads));
  keepPicture(downloads, QStringLiteral("downloads.png"));

  QSignalSpy finished(&window->controller(), &MainFormController::addingFinished);
  emit downloads->downloadFormDidAddFiles({media.path(QStringLiteral("two.mp4"))});
  ASSERT_TRUE(finished.wait(30000));
  EXPECT_EQ(rowNames(), QStringList{"two"});
  downloads->close();
  open->trigger();
  EXPECT_EQ(window->findChildren<DownloadWindow*>().size(), 1) << "kept, not made again";
}

TEST_F(MainWindowTest, TheMenusCarryTheirKeysAndSelectAllTicksEveryItem) {
  QMap<QString, QKeySequence> keys;
  for (QAction* action : window->findChildren<QAction*>()) {
    if (!action->text().isEmpty()) keys.insert(action->text(), action->shortcut());
  }
  const QMap<QString, QKeySequence> expected{
      {"&Add Files...", QKeySequence::Open},        {"&Download Videos...", QKeySequence("Ctrl+D")},
      {"&Output Folder...", QKeySequence()},         {"&Quit", QKeySequence::Quit},
      {"&Trim...", QKeySequence("Ctrl+T")},          {"&Effects...", QKeySequence("Ctrl+E")},
      {"S&plit...", QKeySequence("Ctrl+L")},         {"Ta&gs...", QKeySequence("Ctrl+I")},
      {"&Settings...", QKeySequence("Ctrl+P")},      {"&Remove", QKeySequence::Delete},
      {"Move &Up", QKeySequence("Ctrl+Up")},         {"Move &Down", QKeySequence("Ctrl+Down")},
      {"Select &All", QKeySequence::SelectAll},      {"&Start", QKeySequence("Ctrl+Return")},
      {"&Cancel", QKeySequence(Qt::Key_Escape)},     {"&Help", QKeySequence::HelpContents},
  };
  for (auto command = expected.begin(); command != expected.end(); ++command) {
    ASSERT_TRUE(keys.contains(command.key())) << command.key().toStdString();
    EXPECT_EQ(keys.value(command.key()), command.value()) << command.key().toStdString();
  }
  for (const char* command : {"&Support", "Check for &Updates...", "&About"}) {
    EXPECT_TRUE(keys.contains(QLatin1String(command))) << command;
  }

  addClips({"one.mp4", "two.mp4"});
  const NodeInfo::List items = window->controller().videoData();
  for (const NodeInfo::Ptr& item : items) window->controller().mainList().setSelected(item, false);
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  QTest::keySequence(window.get(), QKeySequence::SelectAll);
  for (const NodeInfo::Ptr& item : items) EXPECT_TRUE(item->isSelected());
}

TEST_F(MainWindowTest, TheEditCommandsOpenTheEditorsOnTheCurrentItemWithThePreviewStopped) {
  addClips({"one.mp4"});
  window->mediaList()->setCurrentIndex(window->mediaList()->model()->index(0, 0));
  PreviewPanel* preview = window->preview();
  QTest::mouseClick(toolButtonNamed(preview, QStringLiteral("Play")), Qt::LeftButton);
  ASSERT_TRUE(preview->player().isPlaying());

  const struct {
    const char* command;
    const char* picture;
    std::function<bool(QWidget*)> isTheEditor;
  } commands[] = {
      {"&Trim...", "trim.png", [](QWidget* shown) { return qobject_cast<TrimDialog*>(shown) != nullptr; }},
      {"S&plit...", "split.png", [](QWidget* shown) { return qobject_cast<SplitDialog*>(shown) != nullptr; }},
      {"&Effects...", "effects.png", [](QWidget* shown) { return qobject_cast<EditorDialog*>(shown) != nullptr; }},
  };
  for (const auto& command : commands) {
    QAction* action = nullptr;
    for (QAction* candidate : window->findChildren<QAction*>()) {
      if (candidate->text() == QLatin1String(command.command)) action = candidate;
    }
    ASSERT_NE(action, nullptr) << command.command;
    bool opened = false;
    // The editor runs modally: it is looked at and closed from the event loop it runs.
    QTimer::singleShot(0, [&] {
      ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }, 10000));
      QWidget* shown = QApplication::activeModalWidget();
      opened = command.isTheEditor(shown);
      keepPicture(shown, QLatin1String(command.picture));
      static_cast<QDialog*>(shown)->reject();
    });
    action->trigger();
    EXPECT_TRUE(opened) << command.command;
    EXPECT_FALSE(preview->player().isPlaying()) << command.command;
  }
}

}  // namespace
