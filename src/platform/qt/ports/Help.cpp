#include "platform/qt/ports/Help.h"

#include <signal.h>

#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#include "platform/qt/base/QtText.h"

namespace quillbox {

bool OpenHelp(const Text& folder, const QString& page) {
  const QString path = ToQt(folder) + QLatin1Char('/') + page;
  if (!QFileInfo::exists(path)) return false;
  QProcess browser;
  browser.setProgram(QStringLiteral("xdg-open"));
  browser.setArguments({QUrl::fromLocalFile(path).toString()});
  // The signals that this program takes in its own way are the browser's again.
  browser.setChildProcessModifier([] {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
  });
  return browser.startDetached();
}

}  // namespace quillbox
