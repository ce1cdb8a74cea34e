// Copying UTF-8 text into the fixed character fields of the converter's
// records. The records are zero-filled before any text is copied.
#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace RecordFields {

// Whether `text` fits a field of `fieldSize` bytes together with its terminating NUL.
inline bool fitsTerminated(const QByteArray& text, std::size_t fieldSize) {
  return static_cast<std::size_t>(text.size()) < fieldSize;
}

// Copies `text` and its terminator; the caller has checked that it fits.
template <std::size_t N>
void copyTerminated(char (&field)[N], const QByteArray& text) {
  std::memcpy(field, text.constData(), static_cast<std::size_t>(text.size()) + 1);
}

// Copies as much of `text` as the field holds, cut before a character that
// would not fit whole. A text that fills the field has no terminator.
template <std::size_t N>
void copyUpTo(char (&field)[N], const QByteArray& text) {
  std::size_t length = std::min(static_cast<std::size_t>(text.size()), N);
  if (length < static_cast<std::size_t>(text.size())) {
    // Step back over continuation bytes (10xxxxxx) to the start of the cut character.
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
  }
  std::memcpy(field, text.constData(), length);
}

}  // namespace RecordFields
