#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

#include "platform/qt/base/QtText.h"
#include "platform/qt/ports/QtTips.h"
#include "tray/tips/MLToolTip.h"

// tip-window TIP: a window as large as all monitors together, which shows the tip wherever the mouse goes, as
// the program shows those of its controls.
namespace quillbox {
namespace {

constexpr int kToolTipWidth = 320;  // pixels, as the program has it

class TipWindow : public QWidget {
 public:
  explicit TipWindow(const QString& tip) : tip_(FromQt(tip)) {
    layout_.MLToolTipInstall();
    layout_.MLToolTipSetMaxWidth(kToolTipWidth);
    tips_.Use(layout_);
    setWindowFlags(Qt::X11BypassWindowManagerHint);
    setGeometry(QGuiApplication::primaryScreen()->virtualGeometry());
    setMouseTracking(true);
  }

 protected:
  void mouseMoveEvent(QMouseEvent* event) override {
    tips_.Show(tip_, event->globalPosition().toPoint(), *this);
  }

 private:
  Text tip_;
  MLToolTip layout_;
  QtTips tips_;
};

}  // namespace
}  // namespace quillbox

int main(int count, char** arguments) {
  QApplication application(count, arguments);
  if (application.arguments().size() != 2) {
    std::fputs("usage: tip-window TIP\n", stderr);
    return 2;
  }
  quillbox::TipWindow window(application.arguments().at(1));
  window.show();
  return QApplication::exec();
}
