#include "platform/qt/widgets/StatusView.h"

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

#include "core/window/StatusArea.h"
#include "platform/qt/widgets/Bindings.h"

namespace quillbox {

QWidget* MakeStatus(FormView& view, StatusArea& status) {
  auto* const widget = new QWidget(&view);
  auto* const layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  QLabel* const label = MakeLabel(view, status.GetLabel(), QStringLiteral("Status"));
  // What it does for the mouse is done elsewhere by keyboard.
  label->setFocusPolicy(Qt::NoFocus);
  label->unsetCursor();
  label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QStringLiteral("  Refreshed  ")));
  layout->addWidget(MakeLine(view, status.UpperLine()));
  layout->addWidget(label, 0, Qt::AlignHCenter);
  layout->addWidget(MakeLine(view, status.LowerLine()));
  return widget;
}

}  // namespace quillbox
