#include "CommonClass.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <QVariantMap>

#include <cctype>
#include <cstring>

#include "CommonClass/GlobalSettings.h"
#include "CommonClass/KMVLog.h"
#include "CommonClass/MainThread.h"
#include "CommonClass/PlatformServices.h"
#include "CommonClass/PropertyList.h"
#include "CommonClass/StandardPaths.h"

QString CommonClass::productInfoPath() {
  return QStringLiteral("%1/ProductInfo").arg(QCoreApplication::applicationDirPath());
}

std::optional<ProductInfo> CommonClass::readProductInfo() {
  return DatatoObj<ProductInfo>(readFile(productInfoPath()));
}

void CommonClass::showMessage(const QString& message) { showMessage(kProductName, message); }

void CommonClass::showMessage(const QString& message, const QString& informativeText) {
  MainThread::run([message, informativeText] {
    if (AlertPresenter* alerts = PlatformServices::alerts()) {
      alerts->showMessage(message, informativeText);
    } else {
      KMVLog::Log(message + QLatin1Char(' ') + informativeText);
    }
  });
}

std::optional<RGBAColor> CommonClass::getColor(const QString& hex) {
  if (hex.size() != 6 && hex.size() != 8) return std::nullopt;
  auto component = [&hex](int index) -> std::optional<double> {
    bool ok = false;
    const int value = hex.mid(index * 2, 2).toInt(&ok, 16);
    return ok ? std::optional<double>(value / 255.0) : std::nullopt;
  };
  const int offset = hex.size() == 8 ? 1 : 0;
  const auto alpha = offset ? component(0) : std::optional<double>(1.0);
  const auto red = component(offset);
  const auto green = component(offset + 1);
  const auto blue = component(offset + 2);
  if (!alpha || !red || !green || !blue) return std::nullopt;
  return RGBAColor{*red, *green, *blue, *alpha};
}

uint32_t CommonClass::getColorInteger(const RGBAColor& color) {
  auto byte = [](double component) { return static_cast<uint32_t>(component * 255) & 0xFFu; };
  return (byte(color.red) << 16) | (byte(color.green) << 8) | byte(color.blue);
}

std::optional<RGBAColor> CommonClass::getColorFromPlist(const QString& plistName, const QString& key) {
  const auto plist = PropertyList::readFile(StandardPaths::pathForResource(plistName + QStringLiteral(".plist")));
  if (!plist) return std::nullopt;
  return getColor(plist->toMap().value(key).toString());
}

uint32_t CommonClass::getFileSize(const QString& path) {
  return static_cast<uint32_t>(static_cast<int32_t>(getFileSizeByBytes(path)) / 1024);
}

int64_t CommonClass::getFileSizeByBytes(const QString& path) { return QFileInfo(path).size(); }

double CommonClass::getFolderSize(const QString& folder) {
  double total = 0;
  QDirIterator entries(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
  while (entries.hasNext()) {
    entries.next();
    const QFileInfo entry = entries.fileInfo();
    if (entry.isFile()) total += static_cast<double>(entry.size());
  }
  return total;
}

double CommonClass::getFileSizeForGB(double bytes) { return bytes / 1000.0 / 1000.0 / 1000.0; }

double CommonClass::getMinute(double seconds) { return seconds / 60.0; }

std::string CommonClass::timeFormatBySecond(int seconds) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%02d:%02d:%02d", seconds / 3600, (seconds % 3600) / 60, seconds % 60);
  return buffer;
}

QString CommonClass::formatTimeForDouble(double seconds) {
  return QString::fromStdString(timeFormatBySecond(static_cast<int>(seconds)));
}

QString CommonClass::timeStrBySecond(int seconds) { return QString::fromStdString(timeFormatBySecond(seconds)); }

QString CommonClass::NSStringTrim(const QString& text) {
  QString result = text.trimmed();
  result.remove(QLatin1Char(' '));
  return result;
}

char* CommonClass::trim(char* text) {
  if (text == nullptr) return nullptr;
  char* start = text;
  while (*start != '\0' && std::isspace(static_cast<unsigned char>(*start))) ++start;
  size_t length = std::strlen(start);
  while (length > 0 && std::isspace(static_cast<unsigned char>(start[length - 1]))) --length;
  std::memmove(text, start, length);
  text[length] = '\0';
  return length == 0 ? nullptr : text;
}

QString CommonClass::getNodeValue(const QDomElement& element, const QString& name) {
  const QDomElement child = element.firstChildElement(name);
  return child.isNull() ? QString() : child.text();
}

int CommonClass::OSVersion() {
  const QStringList parts = QSysInfo::kernelVersion().split(QLatin1Char('.'));
  auto number = [&parts](int index) { return index < parts.size() ? parts[index].toInt() : 0; };
  auto bcd = [](int value) { return ((value / 10) % 10) * 16 + value % 10; };
  return (bcd(number(0)) << 8) | (std::min(number(1), 9) << 4) | std::min(number(2), 9);
}

bool CommonClass::creatOutputDirectory(const QString& path) {
  if (path.isEmpty()) return false;
  if (QFileInfo(path).isDir()) return true;
  return QDir().mkpath(path);
}

void CommonClass::deleteFile(const QString& path) {
  if (path.isEmpty()) return;
  const QFileInfo info(path);
  if (info.isDir() && !info.isSymLink()) {
    QDir(path).removeRecursively();
  } else {
    QFile::remove(path);
  }
}

bool CommonClass::copyFile(const QString& file, const QString& folderPrefix) {
  return QFile::copy(file, folderPrefix + QFileInfo(file).fileName());
}

QString CommonClass::OpenSavePanel(const QString& suggestedPath, const QString& message) {
  FilePanels* panels = PlatformServices::panels();
  return panels ? panels->savePanel(suggestedPath, message) : QString();
}

QString CommonClass::openFolder(const QString& startFolder) {
  FilePanels* panels = PlatformServices::panels();
  return panels ? panels->openFolder(startFolder) : QString();
}

QString CommonClass::openSingleFiles(const QStringList& extensions) {
  FilePanels* panels = PlatformServices::panels();
  return panels ? panels->openSingleFile(extensions) : QString();
}

QStringList CommonClass::openFiles(const QStringList& extensions) {
  FilePanels* panels = PlatformServices::panels();
  return panels ? panels->openFiles(extensions) : QStringList();
}

bool CommonClass::writeAtomically(const QString& path, const QByteArray& data) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return false;
  // A full disk shows only when the buffer reaches the disk: every write and
  // the flush are checked before the new file may replace the old one.
  if (file.write(data) != data.size() || !file.flush() || file.error() != QFileDevice::NoError) {
    file.cancelWriting();
    return false;
  }
  return file.commit();
}

QByteArray CommonClass::readFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
