#include "platform/qt/views/ClipView.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "clip/ClipPage.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/FindBar.h"
#include "platform/qt/widgets/StatusView.h"

namespace quillbox {

QWidget* MakeClipPage(FormView& view, ClipPage& page, ClipList& list) {
  auto* const widget = new QWidget(&view);
  auto* const layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 4, 0, 4);
  layout->addWidget(MakeFindBar(view, page.find, QStringLiteral("Find in the Clip-List")));
  layout->addWidget(MakeList(view, list.List2, QStringLiteral("Clip-List"),
                             QStringLiteral("What you copy in any program appears here.")),
                    3);
  auto* const row = new QHBoxLayout;
  row->addWidget(MakeButton(view, page.Command001));
  row->addWidget(MakeButton(view, page.Command003));
  row->addStretch(1);
  row->addWidget(MakeStatus(view, page.status));
  row->addStretch(1);
  row->addWidget(MakeButton(view, page.Command000, QStringLiteral("Clear clipboard")));
  layout->addLayout(row);
  layout->addWidget(
      MakeField(view, page.Text0, QStringLiteral("Current clipboard text"),
                QStringLiteral("No text is on the clipboard. What you type here is put on it.")),
      2);
  return widget;
}

}  // namespace quillbox
