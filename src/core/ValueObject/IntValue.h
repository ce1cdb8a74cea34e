// Numbers typed into or read from text, as the tag fields carry them.
#pragma once

#include <QString>

#include <cstdint>

// The integer a text starts with: leading white space, an optional sign and
// the digits after it. 0 when there are none; clamped to the 32-bit range.
int32_t intValue(const QString& text);
