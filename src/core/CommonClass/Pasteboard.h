// The pasteboard's plain text, behind an interface: the desktop's clipboard
// in the windows, a fake in tests.
#pragma once

#include <QString>

class Pasteboard {
 public:
  virtual ~Pasteboard() = default;
  // The plain text on the pasteboard; empty when it holds none.
  virtual QString string() const = 0;
  // Replaces the pasteboard's contents by `text` as plain text.
  virtual void setString(const QString& text) = 0;
};
