// Shared helpers of the application: product information, alerts, colours,
// sizes, durations, strings, folders, object archiving and file panels.
#pragma once

#include <QByteArray>
#include <QDomElement>
#include <QSaveFile>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

#include "CommonClass/KeyedArchive.h"
#include "ValueObject/ProductInfo.h"

// A colour with components from 0.0 to 1.0.
struct RGBAColor {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
  bool operator==(const RGBAColor&) const = default;
};

class CommonClass {
 public:
  // The ProductInfo archive beside the executable, read afresh on each call.
  static std::optional<ProductInfo> readProductInfo();
  static QString productInfoPath();

  // Informational alert titled kProductName ... with the single button "OK".
  // From a worker thread it is shown on the main thread without waiting.
  static void showMessage(const QString& message);
  static void showMessage(const QString& message, const QString& informativeText);

  // "RRGGBB" (opaque) or "AARRGGBB"; any other length gives nullopt.
  static std::optional<RGBAColor> getColor(const QString& hex);
  // 0xRRGGBB, each component x 255 truncated.
  static uint32_t getColorInteger(const RGBAColor& color);
  // getColor of the string under `key` in the resource property list `plistName`.
  static std::optional<RGBAColor> getColorFromPlist(const QString& plistName, const QString& key);

  // Size in KiB: the byte size as a 32-bit int, divided by 1024.
  static uint32_t getFileSize(const QString& path);
  static int64_t getFileSizeByBytes(const QString& path);
  // Sum of every entry below `folder`, links followed, in bytes.
  static double getFolderSize(const QString& folder);
  // Bytes in decimal gigabytes (1000^3).
  static double getFileSizeForGB(double bytes);
  static double getMinute(double seconds);

  // "%02d:%02d:%02d" of the whole seconds: 3661.9 -> "01:01:01".
  static QString formatTimeForDouble(double seconds);
  static std::string timeFormatBySecond(int seconds);
  static QString timeStrBySecond(int seconds);

  // Whitespace and newlines stripped at both ends, then every inner space removed.
  static QString NSStringTrim(const QString& text);
  // Strips leading and trailing white space in place; an empty result gives nullptr.
  static char* trim(char* text);
  // String value of the first child element `name`, or "".
  static QString getNodeValue(const QDomElement& element, const QString& name);
  // The kernel version as packed BCD: 6.1 is 0x0610 (minor and patch capped at 9).
  static int OSVersion();

  // False for ""; true when it already is a folder; else creates it with
  // intermediate folders and returns the outcome.
  static bool creatOutputDirectory(const QString& path);
  static void deleteFile(const QString& path);
  // Copies `file` to `folderPrefix` + its file name; the prefix ends in "/".
  static bool copyFile(const QString& file, const QString& folderPrefix);

  // Keyed archiving of a value type T with className, encodeWithCoder and
  // initWithCoder.
  template <class T>
  static QByteArray objectToData(const T& object) {
    KeyedArchiver coder(QString::fromLatin1(T::className));
    object.encodeWithCoder(coder);
    return coder.archivedData();
  }
  template <class T>
  static std::optional<T> DatatoObj(const QByteArray& data) {
    auto coder = KeyedUnarchiver::open(data, QString::fromLatin1(T::className));
    return coder ? T::initWithCoder(*coder) : std::nullopt;
  }
  // Archives `object` and writes it atomically.
  template <class T>
  static bool saveObject(const T& object, const QString& path) {
    return writeAtomically(path, objectToData(object));
  }
  // Replaces `object` by the one archived in `path`, when the file holds one.
  template <class T>
  static bool copyObject(T& object, const QString& path) {
    auto loaded = DatatoObj<T>(readFile(path));
    if (!loaded) return false;
    object = std::move(*loaded);
    return true;
  }
  // Deep copy through an archive round trip.
  template <class T>
  static bool CopyObject(const T& source, T& destination) {
    auto copy = DatatoObj<T>(objectToData(source));
    if (!copy) return false;
    destination = std::move(*copy);
    return true;
  }

  // File panels of the installed FilePanels; empty when cancelled or when
  // no panels are installed.
  static QString OpenSavePanel(const QString& suggestedPath, const QString& message);
  static QString openFolder(const QString& startFolder);
  static QString openSingleFiles(const QStringList& extensions);
  static QStringList openFiles(const QStringList& extensions);

  static bool writeAtomically(const QString& path, const QByteArray& data);
  static QByteArray readFile(const QString& path);
};
