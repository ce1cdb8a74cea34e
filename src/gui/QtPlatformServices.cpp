#include "QtPlatformServices.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

#include "CommonClass/GlobalSettings.h"

namespace {
QString patternsOf(const QStringList& extensions) {
  QStringList patterns;
  for (const QString& extension : extensions) patterns.append(QStringLiteral("*.") + extension);
  return patterns.isEmpty() ? QStringLiteral("*") : patterns.join(QLatin1Char(' '));
}

QString nameFilter(const QStringList& extensions) { return QStringLiteral("Media (%1)").arg(patternsOf(extensions)); }
}  // namespace

void QtAlertPresenter::showMessage(const QString& message, const QString& informativeText) {
  QMessageBox box(QMessageBox::Information, kProductName, message, QMessageBox::Ok, parent_);
  box.setInformativeText(informativeText);
  box.exec();
}

int QtAlertPresenter::ask(const QString& message, const QString& informativeText, const QStringList& buttons) {
  QMessageBox box(QMessageBox::Question, kProductName, message, QMessageBox::NoButton, parent_);
  box.setInformativeText(informativeText);
  QList<QAbstractButton*> added;
  for (const QString& title : buttons) added.append(box.addButton(title, QMessageBox::AcceptRole));
  if (!added.isEmpty()) box.setDefaultButton(qobject_cast<QPushButton*>(added.first()));
  box.exec();
  const qsizetype chosen = added.indexOf(box.clickedButton());
  return chosen < 0 ? static_cast<int>(buttons.size() - 1) : static_cast<int>(chosen);
}

QString QtFilePanels::savePanel(const QString& suggestedPath, const QString& message) {
  const QString suffix = QFileInfo(suggestedPath).suffix();
  QFileDialog dialog(nullptr, message, suggestedPath);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(suffix);
  if (!suffix.isEmpty()) dialog.setNameFilter(nameFilter({suffix}));
  dialog.selectFile(suggestedPath);
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QString QtFilePanels::openFolder(const QString& startFolder) {
  return QFileDialog::getExistingDirectory(parent_, QString(), startFolder);
}

QString QtFilePanels::openSingleFile(const QStringList& extensions) {
  return QFileDialog::getOpenFileName(parent_, QString(), DefInputPath, nameFilter(extensions));
}

QStringList QtFilePanels::openFiles(const QStringList& extensions) {
  return QFileDialog::getOpenFileNames(parent_, QString(), DefInputPath, nameFilter(extensions));
}

QStringList QtFilePanels::openFilesWithFilters(const QString& startFolder, const QList<Filter>& filters,
                                               int& chosenFilter) {
  QFileDialog dialog(parent_, QString(), startFolder);
  dialog.setFileMode(QFileDialog::ExistingFiles);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  QStringList names;
  for (const Filter& filter : filters) {
    // A name that carries its own pattern, such as "All File(*.*)", stays as it is.
    names.append(filter.first.contains(QLatin1Char('(')) ? filter.first
                                                          : QStringLiteral("%1 (%2)").arg(filter.first,
                                                                                          patternsOf(filter.second)));
  }
  dialog.setNameFilters(names);
  if (chosenFilter >= 0 && chosenFilter < names.size()) dialog.selectNameFilter(names[chosenFilter]);
  if (dialog.exec() != QDialog::Accepted) return {};
  chosenFilter = static_cast<int>(names.indexOf(dialog.selectedNameFilter()));
  return dialog.selectedFiles();
}

bool QtWorkspace::revealInFileViewer(const QString& path) {
  const QFileInfo info(path);
  return QDesktopServices::openUrl(QUrl::fromLocalFile(info.isDir() ? path : info.absolutePath()));
}

bool QtWorkspace::openAddress(const QString& address) { return QDesktopServices::openUrl(QUrl(address)); }

QString QtPasteboard::string() const { return QGuiApplication::clipboard()->text(); }

void QtPasteboard::setString(const QString& text) { QGuiApplication::clipboard()->setText(text); }
