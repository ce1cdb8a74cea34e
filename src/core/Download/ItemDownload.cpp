#include "ItemDownload.h"

#include "Download/HttpFileDownload.h"
#include "Download/ManifestRemuxDownload.h"

std::unique_ptr<ItemDownload> ItemDownload::forAddress(const QUrl& address, const QString& destination) {
  if (isStreamingManifest(address)) return std::make_unique<ManifestRemuxDownload>(address, destination);
  return std::make_unique<HttpFileDownload>(address, destination);
}

bool ItemDownload::isStreamingManifest(const QUrl& address) {
  const QString path = address.path().toLower();
  return path.endsWith(QLatin1String(".m3u8")) || path.endsWith(QLatin1String(".mpd")) ||
         address.fragment().startsWith(QLatin1String("representation="));
}

ItemDownload::ItemDownload(QUrl address, QString destination)
    : address_(std::move(address)), destination_(std::move(destination)) {}
