// Shows the download window with a line in every state (analysing, five
// downloads held halfway, one waiting, one finished, one failed), against a
// video site on 127.0.0.1, in a home of its own, for a look at it: run it
// under a display and take a picture of the screen. Not a test; it quits by
// itself after the seconds given as its first argument (20 unless given).
// "--empty" shows the empty list instead, "--settings" the settings sheet
// over it.

#include <QApplication>
#include <QBuffer>
#include <QLinearGradient>
#include <QPainter>
#include <QTemporaryDir>
#include <QTimer>

#include "Action/ApplicationLifecycle.h"
#include "CommonClass/UserDefaults.h"
#include "Download/DownloadSettings.h"
#include "Download/HttpFileDownload.h"
#include "DownloadTestServer.h"
#include "download/DownloadWindow.h"

namespace {

QByteArray posterPicture() {
  QImage picture(320, 180, QImage::Format_RGB32);
  QPainter painter(&picture);
  QLinearGradient sky(0, 0, 0, 180);
  sky.setColorAt(0, QColor(255, 170, 90));
  sky.setColorAt(1, QColor(60, 40, 120));
  painter.fillRect(picture.rect(), sky);
  painter.setBrush(QColor(255, 230, 150));
  painter.setPen(Qt::NoPen);
  painter.drawEllipse(QPoint(160, 120), 40, 40);
  painter.fillRect(0, 130, 320, 50, QColor(30, 40, 80));
  painter.end();
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  picture.save(&buffer, "PNG");
  return png;
}

}  // namespace

int main(int argc, char** argv) {
  QTemporaryDir home;
  const QByteArray path = home.path().toLocal8Bit();
  setenv("HOME", path.constData(), 1);
  setenv("XDG_CONFIG_HOME", (path + "/.config").constData(), 1);
  setenv("XDG_DATA_HOME", (path + "/.local/share").constData(), 1);
  QApplication app(argc, argv);
  ApplicationLifecycle::identifyApplication();
  HttpFileDownload::setRetryPause(std::chrono::milliseconds(1));
  UserDefaults::standardUserDefaults().setObject(home.path() + QStringLiteral("/Download"),
                                                 QLatin1String(DownloadSettings::kSavePathDefault));

  DownloadTestServer site(4'000'000);
  site.setPoster(posterPicture());
  const QStringList held{"mountain-river", "city-lights-at-night", "ocean-waves",
                         "forest-walk",    "desert-road",          "harbour-morning"};
  for (const QString& name : held) site.hold(name);

  DownloadWindow window;
  window.show();
  const QStringList arguments = QApplication::arguments();
  if (arguments.contains(QLatin1String("--settings"))) window.settingClick();
  if (!arguments.contains(QLatin1String("--empty"))) {
    QStringList pages{site.pageAddress("sunset-timelapse"), site.pageAddress("gone").replace(".html", ".htm")};
    for (const QString& name : held) pages.append(site.pageAddress(name));
    window.controller().addDroppedLinks(pages);
  }

  const int seconds = arguments.size() > 1 ? arguments[1].toInt() : 20;
  QTimer::singleShot(seconds * 1000, &app, &QApplication::quit);
  return app.exec();
}
