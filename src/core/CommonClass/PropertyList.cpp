#include "PropertyList.h"

#include <QDateTime>
#include <QFile>

#include <plist/plist.h>

#include <cstdlib>
#include <memory>

namespace {

using PlistPtr = std::unique_ptr<void, decltype(&plist_free)>;

// Seconds between the Unix epoch and the property-list epoch (2001-01-01).
constexpr qint64 kPlistEpochOffset = 978307200;

QVariant toVariant(plist_t node) {
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      uint8_t value = 0;
      plist_get_bool_val(node, &value);
      return bool(value);
    }
    case PLIST_UINT: {
      uint64_t value = 0;
      plist_get_uint_val(node, &value);
      return static_cast<qint64>(value);
    }
    case PLIST_REAL: {
      double value = 0;
      plist_get_real_val(node, &value);
      return value;
    }
    case PLIST_STRING: {
      char* text = nullptr;
      plist_get_string_val(node, &text);
      QString value = QString::fromUtf8(text);
      std::free(text);
      return value;
    }
    case PLIST_DATA: {
      char* bytes = nullptr;
      uint64_t length = 0;
      plist_get_data_val(node, &bytes, &length);
      QByteArray value(bytes, static_cast<qsizetype>(length));
      std::free(bytes);
      return value;
    }
    case PLIST_DATE: {
      int32_t seconds = 0;
      int32_t microseconds = 0;
      plist_get_date_val(node, &seconds, &microseconds);
      return QDateTime::fromMSecsSinceEpoch((seconds + kPlistEpochOffset) * 1000 + microseconds / 1000);
    }
    case PLIST_ARRAY: {
      QVariantList list;
      const uint32_t size = plist_array_get_size(node);
      for (uint32_t i = 0; i < size; ++i) list.append(toVariant(plist_array_get_item(node, i)));
      return list;
    }
    case PLIST_DICT: {
      QVariantMap map;
      plist_dict_iter iter = nullptr;
      plist_dict_new_iter(node, &iter);
      char* key = nullptr;
      plist_t item = nullptr;
      for (plist_dict_next_item(node, iter, &key, &item); item != nullptr;
           plist_dict_next_item(node, iter, &key, &item)) {
        map.insert(QString::fromUtf8(key), toVariant(item));
        std::free(key);
        key = nullptr;
      }
      std::free(iter);
      return map;
    }
    default:
      return {};
  }
}

plist_t toNode(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool: return plist_new_bool(value.toBool());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong: return plist_new_uint(static_cast<uint64_t>(value.toLongLong()));
    case QMetaType::Double: return plist_new_real(value.toDouble());
    case QMetaType::QString: return plist_new_string(value.toString().toUtf8().constData());
    case QMetaType::QByteArray: {
      const QByteArray bytes = value.toByteArray();
      return plist_new_data(bytes.constData(), static_cast<uint64_t>(bytes.size()));
    }
    case QMetaType::QDateTime: {
      const qint64 ms = value.toDateTime().toMSecsSinceEpoch() - kPlistEpochOffset * 1000;
      return plist_new_date(static_cast<int32_t>(ms / 1000), static_cast<int32_t>((ms % 1000) * 1000));
    }
    case QMetaType::QVariantList: {
      plist_t array = plist_new_array();
      for (const QVariant& item : value.toList()) {
        if (plist_t node = toNode(item)) plist_array_append_item(array, node);
      }
      return array;
    }
    case QMetaType::QVariantMap: {
      plist_t dict = plist_new_dict();
      const QVariantMap map = value.toMap();
      for (auto it = map.constBegin(); it != map.constEnd(); ++it) {
        if (plist_t node = toNode(it.value())) plist_dict_set_item(dict, it.key().toUtf8().constData(), node);
      }
      return dict;
    }
    default: return nullptr;
  }
}

}  // namespace

namespace PropertyList {

std::optional<QVariant> fromData(const QByteArray& data) {
  if (data.isEmpty()) return std::nullopt;
  plist_t node = nullptr;
  plist_from_memory(data.constData(), static_cast<uint32_t>(data.size()), &node);
  if (node == nullptr) return std::nullopt;
  PlistPtr owner(node, &plist_free);
  return toVariant(node);
}

std::optional<QVariant> readFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  return fromData(file.readAll());
}

QByteArray toBinary(const QVariant& value) {
  plist_t node = toNode(value);
  if (node == nullptr) return {};
  PlistPtr owner(node, &plist_free);
  char* bytes = nullptr;
  uint32_t length = 0;
  plist_to_bin(node, &bytes, &length);
  QByteArray result(bytes, static_cast<qsizetype>(length));
  plist_to_bin_free(bytes);
  return result;
}

}  // namespace PropertyList
