#include "TerminalServices.h"

#include <QFileInfo>
#include <QProcess>
#include <QTextStream>

#include <unistd.h>
#include <cstdio>

namespace {

bool hasTerminal() { return isatty(STDIN_FILENO) && isatty(STDERR_FILENO); }

QTextStream& err() {
  static QTextStream stream(stderr);
  return stream;
}

// Prints `prompt` and reads one trimmed line; empty without a terminal.
QString readLine(const QString& prompt) {
  if (!hasTerminal()) return {};
  err() << prompt << Qt::flush;
  static QTextStream in(stdin);
  return in.readLine().trimmed();
}

}  // namespace

void TerminalAlertPresenter::showMessage(const QString& message, const QString& informativeText) {
  err() << message;
  if (!informativeText.isEmpty()) err() << ": " << informativeText;
  err() << Qt::endl;
}

int TerminalAlertPresenter::ask(const QString& message, const QString& informativeText, const QStringList& buttons) {
  if (buttons.isEmpty()) return 0;
  const QString question = informativeText.isEmpty() ? message : message + QStringLiteral(": ") + informativeText;
  const QString prompt = QStringLiteral("%1 [%2] ").arg(question, buttons.join(QLatin1Char('/')));
  // Unasked, the question and the answer taken are still shown.
  if (assumeFirstButton_ || !hasTerminal()) {
    const int answer = assumeFirstButton_ ? 0 : static_cast<int>(buttons.size() - 1);
    err() << prompt << buttons[answer] << Qt::endl;
    return answer;
  }
  for (;;) {
    const QString answer = readLine(prompt);
    for (int i = 0; i < buttons.size(); ++i) {
      if (answer.compare(buttons[i], Qt::CaseInsensitive) == 0 ||
          (answer.size() == 1 && buttons[i].startsWith(answer, Qt::CaseInsensitive))) {
        return i;
      }
    }
    if (answer.isEmpty() && std::feof(stdin)) return static_cast<int>(buttons.size() - 1);
  }
}

QString TerminalFilePanels::savePanel(const QString& suggestedPath, const QString& message) {
  const QString answer = readLine(QStringLiteral("%1 [%2]: ").arg(message, suggestedPath));
  if (answer.isEmpty()) return hasTerminal() ? suggestedPath : QString();
  const QString suffix = QFileInfo(suggestedPath).suffix();
  return suffix.isEmpty() || answer.endsWith(QLatin1Char('.') + suffix) ? answer : answer + QLatin1Char('.') + suffix;
}

QString TerminalFilePanels::openFolder(const QString& startFolder) {
  const QString answer = readLine(QStringLiteral("Folder [%1]: ").arg(startFolder));
  return answer.isEmpty() && hasTerminal() ? startFolder : answer;
}

QString TerminalFilePanels::openSingleFile(const QStringList& extensions) {
  const QString answer = readLine(QStringLiteral("File (%1): ").arg(extensions.join(QLatin1Char(' '))));
  return extensions.contains(QFileInfo(answer).suffix(), Qt::CaseInsensitive) ? answer : QString();
}

QStringList TerminalFilePanels::openFiles(const QStringList& extensions) {
  QStringList chosen;
  QString answer = readLine(
      QStringLiteral("Files or folders, one a line, empty to end (%1): ").arg(extensions.join(QLatin1Char(' '))));
  while (!answer.isEmpty()) {
    chosen.append(answer);
    answer = readLine(QStringLiteral("> "));
  }
  return chosen;
}

bool TerminalWorkspace::revealInFileViewer(const QString& path) {
  QTextStream(stdout) << "Output folder: " << path << Qt::endl;
  return true;
}

bool TerminalWorkspace::openAddress(const QString& address) {
  return QProcess::startDetached(QStringLiteral("xdg-open"), {address});
}
