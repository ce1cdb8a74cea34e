#include "KMVIntFormatter.h"

#include <algorithm>

#include "ValueObject/IntValue.h"

namespace {

// The characters an edit inserted: what `partial` has between the start and
// the end it shares with `previous`.
QString typedCharacters(const QString& previous, const QString& partial) {
  const qsizetype shorter = std::min(previous.size(), partial.size());
  qsizetype prefix = 0;
  while (prefix < shorter && previous.at(prefix) == partial.at(prefix)) ++prefix;
  qsizetype suffix = 0;
  while (suffix < shorter - prefix &&
         previous.at(previous.size() - 1 - suffix) == partial.at(partial.size() - 1 - suffix)) {
    ++suffix;
  }
  return partial.mid(prefix, partial.size() - prefix - suffix);
}

}  // namespace

bool KMVIntFormatter::isPartialStringValid(const QString& previous, const QString& partial) const {
  const QString typed = typedCharacters(previous, partial);
  const bool onlyDigits = std::all_of(typed.begin(), typed.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
  return onlyDigits && intValue(partial) <= maximum_;
}
