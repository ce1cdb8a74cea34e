// The rule of the tag window's number fields: what may be typed into them.
#pragma once

#include <QString>

#include <cstdint>
#include <limits>

class KMVIntFormatter {
 public:
  explicit KMVIntFormatter(int32_t maximum = std::numeric_limits<int32_t>::max()) : maximum_(maximum) {}

  int32_t maximum() const { return maximum_; }
  void setMaximum(int32_t maximum) { maximum_ = maximum; }

  // Whether an edit that turns `previous` into `partial` is taken: the
  // newly typed characters must all be decimal digits and the integer value
  // of the result must not be above the maximum. Deleting is always taken.
  bool isPartialStringValid(const QString& previous, const QString& partial) const;

 private:
  int32_t maximum_;
};
