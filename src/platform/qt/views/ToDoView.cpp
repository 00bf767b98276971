#include "platform/qt/views/ToDoView.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/StatusView.h"
#include "platform/qt/widgets/ViewParts.h"
#include "todo/ToDoPage.h"

namespace quillbox {

QWidget* MakeToDoPage(FormView& view, ToDoPage& page) {
  auto* const widget = new QWidget(&view);
  auto* const layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 4, 0, 4);
  auto* const listRow = new QHBoxLayout;
  listRow->addWidget(MakeList(view, page.List3, QStringLiteral("ToDo-List"),
                              QStringLiteral("Your tasks appear here: write one below and press Enter.")),
                     1);
  listRow->addWidget(MakeUpDown(view, page.UpDown1, QStringLiteral("Move ToDo entry")), 0, Qt::AlignVCenter);
  layout->addLayout(listRow, 1);

  auto* const fieldRow = new QHBoxLayout;
  fieldRow->addWidget(
      MakeField(view, page.Text1, QStringLiteral("Text of the ToDo entry"), QStringLiteral("A new task")), 1);
  fieldRow->addWidget(MakeStatus(view, page.status));
  layout->addLayout(fieldRow);

  auto* const buttons = new QHBoxLayout;
  QAbstractButton* const add = MakeButton(view, page.Command2);
  ReserveWidthFor(*add, {QStringLiteral("Add Entry"), QStringLiteral("Update Entry")});
  buttons->addWidget(add);
  for (CommandButton* button : {&page.Command3, &page.Command4, &page.Command5}) {
    buttons->addWidget(MakeButton(view, *button));
  }
  layout->addLayout(buttons);
  return widget;
}

}  // namespace quillbox
