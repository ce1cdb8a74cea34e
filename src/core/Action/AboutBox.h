// What the about box shows, read from the product information archive on
// each opening. Without the archive, or with a field that does not decrypt,
// the product name and the version fall back to those the program was built
// with, and the other lines stay empty.
#pragma once

#include <QString>

struct AboutBox {
  QString title;
  QString productName;
  QString version;
  QString buildDate;
  QString copyright;
  QString homeAddress;

  static AboutBox read();
};
