#pragma once

#include <QObject>
#include <QString>

class QContextMenuEvent;
class QKeyEvent;
class QLineEdit;
class QWidget;

namespace quillbox {

class Clipboard;

// Copy, cut and paste of fields, by key and by menu, through the program's own clipboard. The toolkit's would
// stop the program until the owner of the clipboard answers; and that may hang, or be this program itself. A
// paste while the clipboard can't be opened pastes nothing. The middle button pastes nothing either: what is
// marked in another program can't be had without waiting for it.
class FieldClipboard : public QObject {
 public:
  explicit FieldClipboard(Clipboard& clipboard) : clipboard_(clipboard) {}

  // From now on; nothing for a widget that is no field.
  void Serve(QWidget& widget);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Key(QWidget& field, const QKeyEvent& event);
  void Copy(const QWidget& field);
  void Paste(QWidget& field);
  bool HasText();
  void OpenMenu(QWidget& field, const QContextMenuEvent& event);

  Clipboard& clipboard_;
};

}  // namespace quillbox
