#include "IntValue.h"

#include <algorithm>
#include <limits>

int32_t intValue(const QString& text) {
  qsizetype position = 0;
  while (position < text.size() && text.at(position).isSpace()) ++position;
  bool negative = false;
  if (position < text.size() && (text.at(position) == u'-' || text.at(position) == u'+')) {
    negative = text.at(position) == u'-';
    ++position;
  }
  constexpr int64_t kLimit = int64_t{std::numeric_limits<int32_t>::max()} + 1;
  int64_t magnitude = 0;
  for (; position < text.size() && text.at(position) >= u'0' && text.at(position) <= u'9'; ++position) {
    magnitude = std::min(kLimit, magnitude * 10 + (text.at(position).unicode() - u'0'));
  }
  const int64_t value = negative ? -magnitude : std::min(magnitude, kLimit - 1);
  return static_cast<int32_t>(value);
}
