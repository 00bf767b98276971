#include "platform/forms/TextBox.h"
#include "platform/qt/widgets/AreaField.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/LineField.h"

namespace quillbox {

QWidget* MakeField(FormView& view, TextBox& box, const QString& name, const QString& whenEmpty) {
  const auto make = [&](auto* field) -> QWidget* {
    field->setAccessibleName(name);
    field->setPlaceholderText(whenEmpty);
    view.Join(box, *field, [field] { field->Draw(); });
    return field;
  };
  if (box.IsMultiLine()) return make(new AreaField(&view, box));
  return make(new LineField(&view, box));
}

}  // namespace quillbox
