#include "platform/qt/views/PadView.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "pad/PadPage.h"
#include "platform/qt/base/Icons.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/FindBar.h"
#include "platform/qt/widgets/StatusView.h"

namespace quillbox {

QWidget* MakePadPage(FormView& view, PadPage& page, PadList& list) {
  auto* const widget = new QWidget(&view);
  auto* const layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 4, 0, 4);
  layout->addWidget(MakeFindBar(view, page.find, QStringLiteral("Find in the Pad-List")));
  auto* const listRow = new QHBoxLayout;
  listRow->addWidget(
      MakeList(
          view, list.List1, QStringLiteral("Pad-List"),
          QStringLiteral("Texts that you keep appear here: give one a name and press Add."),
          [&list, script = NamedIcon("script")](int row) { return list.IsScript(row) ? script : QIcon(); }),
      1);
  listRow->addWidget(MakeUpDown(view, page.UpDown2, QStringLiteral("Move Pad entry")), 0, Qt::AlignVCenter);
  layout->addLayout(listRow, 3);

  auto* const nameRow = new QHBoxLayout;
  auto* const nameLabel = new QLabel(QStringLiteral("Name:"), widget);
  QWidget* const name = MakeField(view, page.Text3, QStringLiteral("Name of the Pad entry"),
                                  QStringLiteral("What you will know it by"));
  nameLabel->setBuddy(name);
  nameRow->addWidget(nameLabel);
  nameRow->addWidget(name, 1);
  nameRow->addWidget(MakeStatus(view, page.status));
  layout->addLayout(nameRow);

  layout->addWidget(MakeField(view, page.Text101, QStringLiteral("Text of the Pad entry"),
                              QStringLiteral("A text to keep. If it begins with {SCRIPT}, it is typed.")),
                    2);
  auto* const buttons = new QHBoxLayout;
  for (CommandButton* button :
       {&page.Command101, &page.Command102, &page.Command103, &page.Command104, &page.Command105}) {
    buttons->addWidget(MakeButton(view, *button));
  }
  layout->addLayout(buttons);
  return widget;
}

}  // namespace quillbox
