// The about box: the program's icon, name, version and build date, the
// copyright line and the address of its home page, which opens in the browser.
#pragma once

#include <QDialog>

#include "Action/AboutBox.h"

class AboutDialog : public QDialog {
  Q_OBJECT

 public:
  AboutDialog(const AboutBox& box, QWidget* parent = nullptr);
};
