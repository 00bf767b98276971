// An icon in the tray and nothing else: what the toolkit itself costs in time and memory.
#include <QApplication>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QPixmap square(22, 22);
  square.fill(Qt::blue);
  QSystemTrayIcon icon;
  icon.setIcon(QIcon(square));
  icon.show();
  return QApplication::exec();
}
