#include "platform/qt/views/MessageView.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QTextOption>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/base/Icons.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/ShownText.h"
#include "platform/qt/widgets/ViewParts.h"
#include "timer/frmMessage.h"

namespace quillbox {

namespace {

constexpr int kLines = 5;
constexpr int kLogoSize = 32;

// A text of any length: in the middle while it is short, scrolled when it is long, broken within words if
// there is no other way.
class MessageText : public QPlainTextEdit {
 public:
  explicit MessageText(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setFrameShape(QFrame::NoFrame);
    setTabChangesFocus(true);
    // Enter and Escape belong to the buttons; whoever wants to mark the text clicks into it.
    setFocusPolicy(Qt::ClickFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setFont(Scaled(font(), 1.5));
    QTextOption option = document()->defaultTextOption();
    option.setAlignment(Qt::AlignHCenter);
    document()->setDefaultTextOption(option);
    document()->setDocumentMargin(0);
    setMinimumHeight(kLines * fontMetrics().lineSpacing());
    Tint(*this, QPalette::Base, [](const QPalette& palette) { return palette.color(QPalette::Window); });
  }
  void Show(const QString& text) {
    if (toPlainText() == text) return;
    setPlainText(text);
    Center();
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QPlainTextEdit::resizeEvent(event);
    if (!centering_) Center();
  }

 private:
  void Center() {
    centering_ = true;
    setViewportMargins(0, 0, 0, 0);
    int lines = 0;
    for (QTextBlock block = document()->begin(); block.isValid() && lines < kLines + 1;
         block = block.next()) {
      // Asking for its rectangle lays the block out.
      blockBoundingRect(block);
      lines += std::max(1, block.layout()->lineCount());
    }
    const int spare = contentsRect().height() - lines * fontMetrics().lineSpacing();
    if (spare > 1) setViewportMargins(0, spare / 2, 0, 0);
    centering_ = false;
  }

  bool centering_ = false;
};

class MessageView : public DialogView {
 public:
  MessageView(frmMessage& dialog, const ViewTools& tools)
      : DialogView(dialog.form, tools, Coming::WithoutFocus) {
    setWindowIcon(WindowIcon());
    auto* const layout = new QVBoxLayout(this);
    layout->setSpacing(10);
    layout->addLayout(MakeHeading(dialog));
    layout->addWidget(MakeLine(*this, dialog.Line1));

    auto* const text = new MessageText(this);
    text->setAccessibleName(QStringLiteral("Message of the timer"));
    text->setMinimumWidth(text->fontMetrics().averageCharWidth() * 36);
    Join(dialog.Label3, *text, [text, &label = dialog.Label3] { text->Show(ShownText(label.GetCaption())); });
    layout->addWidget(text, 1);
    QLabel* const time = MakeLabel(*this, dialog.Label4, QStringLiteral("Time at which the timer was due"));
    QFont bold = Scaled(time->font(), 1.2);
    bold.setBold(true);
    time->setFont(bold);
    layout->addWidget(time);

    auto* const buttons = new QHBoxLayout;
    QAbstractButton* const close = MakeButton(*this, dialog.Command1);
    QAbstractButton* const again = MakeButton(*this, dialog.Command2);
    close->setMinimumHeight(again->fontMetrics().height() * 2);
    again->setMinimumHeight(close->minimumHeight());
    ReserveWidthFor(*again, {QStringLiteral("Show again in 2 minutes")});
    buttons->addWidget(again, 3);
    buttons->addWidget(close, 2);
    layout->addLayout(buttons);
    setTabOrder(close, again);
    FinishCentered();
  }

 private:
  QLayout* MakeHeading(frmMessage& dialog) {
    auto* const heading = new QHBoxLayout;
    QLabel* const maker = MakeLabel(*this, dialog.Label2);
    QLabel* const title = MakeLabel(*this, dialog.Label1);
    QFont bold = Scaled(title->font(), 1.3);
    bold.setBold(true);
    title->setFont(bold);
    heading->addWidget(MakeImage(*this, dialog.Image1, WindowIcon(), kLogoSize, {}));
    heading->addStretch(1);
    heading->addWidget(maker, 0, Qt::AlignBaseline);
    heading->addWidget(title, 0, Qt::AlignBaseline);
    heading->addStretch(1);
    heading->addWidget(MakeImage(*this, dialog.Image2, WindowIcon(), kLogoSize, {}));
    return heading;
  }
};

}  // namespace

std::unique_ptr<FormView> MakeMessageView(frmMessage& dialog, const ViewTools& tools) {
  return std::make_unique<MessageView>(dialog, tools);
}

}  // namespace quillbox
