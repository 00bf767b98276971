#include "platform/qt/widgets/FormAccess.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/qt/widgets/FormView.h"
#include "platform/qt/widgets/ViewParts.h"

namespace quillbox {

namespace {

QAccessibleInterface* Make(const QString&, QObject* object) {
  auto* const view = dynamic_cast<FormView*>(object);
  if (!view) return nullptr;
  return new QAccessibleWidget(view,
                               dynamic_cast<DialogView*>(view) ? QAccessible::Dialog : QAccessible::Window);
}

}  // namespace

void UseFormAccess() { QAccessible::installFactory(Make); }

}  // namespace quillbox
