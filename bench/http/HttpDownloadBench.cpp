// Downloads one large body from a local server through ASIHTTPRequest and
// through the curl command in the same run, and prints both throughputs,
// their ratio and the peak memory of each.
//
//   http-bench [--size BYTES] [--rounds N] [--folder DIR]

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <sys/resource.h>

#include <algorithm>
#include <optional>

#include "ASIHTTP/ASIHTTPRequest.h"
#include "BulkHttpServer.h"

namespace {

constexpr qint64 kDefaultSize = qint64(1) << 30;
constexpr double kTargetRatio = 0.9;
constexpr double kMemoryTargetMegabytes = 50;

struct Download {
  double seconds = 0;
  double peakMegabytes = 0;
};

QTextStream& out() {
  static QTextStream stream(stdout);
  return stream;
}

// "VmHWM" (peak) or "VmRSS" (now) of this process, in megabytes.
double ownMemoryMegabytes(const char* field) {
  QFile status(QStringLiteral("/proc/self/status"));
  if (!status.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : status.readAll().split('\n')) {
    if (line.startsWith(field)) return line.mid(qstrlen(field) + 1).trimmed().split(' ').value(0).toDouble() / 1024;
  }
  return 0;
}

bool hasExpectedSize(const QString& path, qint64 size) {
  const qint64 actual = QFileInfo(path).size();
  QFile::remove(path);
  if (actual == size) return true;
  out() << "  the file has " << actual << " bytes instead of " << size << Qt::endl;
  return false;
}

class EndingDelegate : public ASIHTTPRequestDelegate {
 public:
  explicit EndingDelegate(QEventLoop& loop) : loop_(loop) {}
  void requestFinished(ASIHTTPRequest*) override { loop_.quit(); }
  void requestFailed(ASIHTTPRequest*) override { loop_.quit(); }

 private:
  QEventLoop& loop_;
};

std::optional<Download> downloadWithRequest(const QUrl& url, const QString& path, qint64 size) {
  const std::shared_ptr<ASIHTTPRequest> request = ASIHTTPRequest::requestWithURL(url);
  request->setDownloadDestinationPath(path);
  request->setTemporaryFileDownloadPath(path + QStringLiteral(".download"));
  QEventLoop loop;
  EndingDelegate delegate(loop);
  request->setDelegate(&delegate);
  QElapsedTimer clock;
  clock.start();
  request->startAsynchronous();
  loop.exec();
  Download download{clock.nsecsElapsed() / 1e9, ownMemoryMegabytes("VmHWM:")};
  request->setDelegate(nullptr);
  if (request->error()) {
    out() << "  ASIHTTPRequest failed: " << request->error()->localizedDescription << Qt::endl;
    return std::nullopt;
  }
  if (!hasExpectedSize(path, size)) return std::nullopt;
  return download;
}

std::optional<Download> downloadWithCurl(const QUrl& url, const QString& path, qint64 size) {
  QProcess curl;
  QElapsedTimer clock;
  clock.start();
  curl.start(QStringLiteral("curl"), {QStringLiteral("--silent"), QStringLiteral("--show-error"),
                                      QStringLiteral("--output"), path, url.toString()});
  if (!curl.waitForFinished(-1) || curl.exitStatus() != QProcess::NormalExit || curl.exitCode() != 0) {
    out() << "  curl failed: " << curl.readAllStandardError() << Qt::endl;
    return std::nullopt;
  }
  const double seconds = clock.nsecsElapsed() / 1e9;
  // The largest resident size among the children waited for: the curl processes.
  rusage children{};
  getrusage(RUSAGE_CHILDREN, &children);
  if (!hasExpectedSize(path, size)) return std::nullopt;
  return Download{seconds, children.ru_maxrss / 1024.0};
}

double megabytesPerSecond(qint64 size, const Download& download) { return size / 1e6 / download.seconds; }

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("http-bench"));
  const QStringList arguments = QCoreApplication::arguments();
  const auto option = [&arguments](const char* name, const QString& fallback) {
    const qsizetype index = arguments.indexOf(QLatin1String(name));
    return index >= 0 && index + 1 < arguments.size() ? arguments[index + 1] : fallback;
  };
  const qint64 size = option("--size", QString::number(kDefaultSize)).toLongLong();
  const int rounds = std::max(1, option("--rounds", QStringLiteral("2")).toInt());
  QTemporaryDir folder(option("--folder", QDir::tempPath()) + QStringLiteral("/http-bench-XXXXXX"));
  BulkHttpServer server(size);
  if (size <= 0 || !folder.isValid() || !server.isListening()) {
    out() << "http-bench: cannot set up (size " << size << ", folder " << folder.path() << ')' << Qt::endl;
    return 1;
  }

  out() << "Downloading " << size << " bytes from " << server.url().toString() << " into " << folder.path()
        << ", best of " << rounds << " rounds" << Qt::endl;
  const double memoryBefore = ownMemoryMegabytes("VmRSS:");
  std::optional<Download> ours;
  std::optional<Download> reference;
  for (int round = 1; round <= rounds; ++round) {
    const std::optional<Download> curlRun = downloadWithCurl(server.url(), folder.filePath("curl.bin"), size);
    const std::optional<Download> ourRun = downloadWithRequest(server.url(), folder.filePath("request.bin"), size);
    if (!curlRun || !ourRun) return 1;
    out() << QStringLiteral("  round %1: curl %2 MB/s, ASIHTTPRequest %3 MB/s")
                 .arg(round)
                 .arg(megabytesPerSecond(size, *curlRun), 0, 'f', 1)
                 .arg(megabytesPerSecond(size, *ourRun), 0, 'f', 1)
          << Qt::endl;
    if (!reference || curlRun->seconds < reference->seconds) reference = curlRun;
    if (!ours || ourRun->seconds < ours->seconds) ours = ourRun;
  }

  const double ratio = reference->seconds / ours->seconds;
  out() << QStringLiteral("curl:           %1 MB/s, peak memory %2 MB")
               .arg(megabytesPerSecond(size, *reference), 0, 'f', 1)
               .arg(reference->peakMegabytes, 0, 'f', 1)
        << Qt::endl
        << QStringLiteral("ASIHTTPRequest: %1 MB/s, peak memory %2 MB (%3 MB before the downloads)")
               .arg(megabytesPerSecond(size, *ours), 0, 'f', 1)
               .arg(ours->peakMegabytes, 0, 'f', 1)
               .arg(memoryBefore, 0, 'f', 1)
        << Qt::endl
        << QStringLiteral("ratio to curl:  %1 (target >= %2): %3")
               .arg(ratio, 0, 'f', 2)
               .arg(kTargetRatio, 0, 'f', 2)
               .arg(ratio >= kTargetRatio ? QStringLiteral("met") : QStringLiteral("missed"))
        << Qt::endl
        << QStringLiteral("peak memory:    %1 MB (target < %2 MB): %3")
               .arg(ours->peakMegabytes, 0, 'f', 1)
               .arg(kMemoryTargetMegabytes, 0, 'f', 0)
               .arg(ours->peakMegabytes < kMemoryTargetMegabytes ? QStringLiteral("met") : QStringLiteral("missed"))
        << Qt::endl;
  return 0;
}
