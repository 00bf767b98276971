#include "platform/qt/ports/Help.h"

#include <signal.h>

#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#include "platform/forms/Form.h"
#include "platform/forms/TabControl.h"
#include "platform/qt/base/QtText.h"

namespace quillbox {

QString HelpPageFor(const Form& form) {
  if (form.Name() == "frmSettings") return QStringLiteral("settings.html");
  if (form.Name() == "frmMessage") return QStringLiteral("timer.html");
  const auto* const tabs = dynamic_cast<const TabControl*>(form.Find("SSTab1"));
  if (form.Name() != "frmTray" || !tabs) return QStringLiteral("index.html");
  return ToQt(tabs->Captions()[static_cast<std::size_t>(tabs->GetTab())]).toLower() + QStringLiteral(".html");
}

void OpenHelp(const Text& folder, const QString& page) {
  const QString path = ToQt(folder) + QLatin1Char('/') + page;
  if (!QFileInfo::exists(path)) return;
  QProcess browser;
  browser.setProgram(QStringLiteral("xdg-open"));
  browser.setArguments({QUrl::fromLocalFile(path).toString()});
  // The signals that this program takes in its own way are the browser's again.
  browser.setChildProcessModifier([] {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
  });
  browser.startDetached();
}

}  // namespace quillbox
