// Chooses the real platform, makes frmTray and runs.
#include <malloc.h>

#include <QApplication>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

#include "base/RuntimeError.h"
#include "platform/qt/Program.h"
#include "platform/qt/SessionPorts.h"

namespace {

// Qt ends the process by itself when the display goes away; what isn't saved yet is saved on that way out.
quillbox::Program* atExit = nullptr;

void SaveAtExit() {
  if (atExit) std::exchange(atExit, nullptr)->SaveAfterLoss();
}

// On Wayland it doesn't even run what is to be run at the end, and leaves from whichever of its threads is
// the first to see it. These are its last words, and nobody leaves before all is saved.
QtMessageHandler sayBefore = nullptr;
std::atomic<bool> running = false;

void SaveAtLastWords(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  sayBefore(type, context, message);
  if (!running || !message.startsWith(QLatin1String("The Wayland connection "))) return;
  if (QThread::currentThread() == qApp->thread()) return SaveAtExit();
  QMetaObject::invokeMethod(qApp, SaveAtExit, Qt::BlockingQueuedConnection);
}

}  // namespace

int main(int argc, char** argv) {
  // Freed memory goes back to the system: the program runs for months beside everything else.
  mallopt(M_TRIM_THRESHOLD, 128 * 1024);
  // Between the rows of a list, which last, no room stays of the long texts that pass through.
  mallopt(M_MMAP_THRESHOLD, 32 * 1024);
  // Texts and menus need no graphics driver.
  if (!std::getenv("QT_XCB_GL_INTEGRATION")) setenv("QT_XCB_GL_INTEGRATION", "none", 0);
  quillbox::EndingSignals signals;
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setApplicationName(QStringLiteral("quillbox"));
  QApplication::setApplicationDisplayName(QString());
  QApplication::setDesktopFileName(QStringLiteral(QUILLBOX_APP_ID));
  try {
    std::optional<quillbox::DisplayChoice> display(std::in_place);
    // There is no command line, not even Qt's own.
    int programName = std::min(argc, 1);
    const QApplication application(programName, argv);
    display.reset();
    quillbox::Program program(signals);
    atExit = &program;
    std::atexit(SaveAtExit);
    sayBefore = qInstallMessageHandler(SaveAtLastWords);
    running = true;
    const int result = program.Start() ? QApplication::exec() : 0;
    running = false;
    program.Finish();
    atExit = nullptr;
    return result;
  } catch (const quillbox::RuntimeError& error) {
    atExit = nullptr;
    std::fprintf(stderr, "quillbox: %s\n", error.what());
    return 1;
  }
}
