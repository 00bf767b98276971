#include "platform/qt/widgets/FindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

#include "find/ListFind.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/FieldKeys.h"
#include "platform/qt/widgets/LineField.h"

namespace quillbox {

namespace {

// A field whose plain keys belong to the list below it.
class FindLine : public LineField {
 public:
  FindLine(QWidget* parent, ListFind& find) : LineField(parent, find.field), find_(find) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const KeyEvent key = KeyOf(*event);
    const bool plain = !key.ctrl && !key.shift && !key.alt;
    if (plain && ListFind::IsListKey(key.code)) {
      find_.field.PersonKey(key);
    } else {
      LineField::keyPressEvent(event);
    }
  }

 private:
  ListFind& find_;
};

}  // namespace

QWidget* MakeFindBar(FormView& view, ListFind& find, const QString& name) {
  auto* const bar = new QWidget(&view);
  auto* const layout = new QHBoxLayout(bar);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* const field = new FindLine(bar, find);
  field->setAccessibleName(name);
  field->setPlaceholderText(QStringLiteral("Find\u2026"));
  QLabel* const shown = MakeLabel(view, find.shown);
  shown->setFocusPolicy(Qt::NoFocus);
  shown->unsetCursor();
  auto* const close = new QToolButton(bar);
  close->setText(QStringLiteral("\u00D7"));
  close->setAutoRaise(true);
  close->setAccessibleName(QStringLiteral("Close find"));
  // Escape does it by keyboard.
  close->setFocusPolicy(Qt::NoFocus);
  QObject::connect(close, &QToolButton::clicked, bar, [&find] { find.PersonClose(); });
  layout->addWidget(field, 1);
  layout->addWidget(shown);
  layout->addWidget(close);
  view.Join(find.field, *field, [bar, field, &find] {
    bar->setVisible(find.field.GetVisible());
    field->Draw();
  });
  return bar;
}

}  // namespace quillbox
