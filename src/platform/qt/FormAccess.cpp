#include "platform/qt/FormAccess.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/qt/FormView.h"
#include "platform/qt/ViewParts.h"

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
