#include "platform/qt/views/StartHelpView.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QTextDocument>
#include <QTextLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "dialogs/frmStartHelp.h"
#include "platform/qt/base/Icons.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/ViewParts.h"

namespace quillbox {

namespace {

constexpr int kLogoSize = 32;
constexpr qsizetype kLongLine = 90;  // characters; a longer line is a paragraph that is wrapped

// Of a line as it is laid out, which fonts of Chinese or Japanese make higher than their line spacing.
int LineHeight(const QFont& font) {
  QTextLayout layout(QStringLiteral("x"), font);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  return static_cast<int>(std::ceil(layout.boundingRect().height()));
}

// As wide as the lines that are broken by hand, and as high as all of the text where the screen allows it.
void SizeFor(const Text& text, QPlainTextEdit& area) {
  const QFontMetrics metrics(area.font());
  const int frame = 2 * area.frameWidth() + 2 * static_cast<int>(area.document()->documentMargin());
  int width = 0;
  for (const QString& line : ToQt(text).split(QStringLiteral("\r\n"))) {
    if (line.size() < kLongLine) width = std::max(width, metrics.horizontalAdvance(line));
  }
  width += metrics.averageCharWidth();
  int lines = 0;
  for (const QString& line : ToQt(text).split(QStringLiteral("\r\n"))) {
    lines += 1 + metrics.horizontalAdvance(line) / width;
  }
  const int most = area.screen()->availableGeometry().height() * 6 / 10;
  area.setMinimumWidth(width + frame + area.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &area));
  area.setMinimumHeight(std::min(most, lines * LineHeight(area.font()) + frame));
}

class StartHelpView : public DialogView {
 public:
  StartHelpView(frmStartHelp& dialog, const ViewTools& tools) : DialogView(dialog.form, tools) {
    setWindowIcon(WindowIcon());
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(MakeHeading(dialog));
    QWidget* const text = MakeField(*this, dialog.Text1, QStringLiteral("Introduction"));
    if (auto* const area = qobject_cast<QPlainTextEdit*>(text)) SizeFor(dialog.Text1.GetText(), *area);
    layout->addWidget(text, 1);
    layout->addWidget(MakeCheckBox(*this, dialog.Check1));
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(MakeButton(*this, dialog.Command1));
    layout->addLayout(buttons);
    FinishCentered();
  }

 private:
  QLayout* MakeHeading(frmStartHelp& dialog) {
    auto* const heading = new QHBoxLayout;
    QLabel* const maker = MakeLabel(*this, dialog.Label2, QStringLiteral("Norvane's: opens the Info dialog"));
    QLabel* const title = MakeLabel(*this, dialog.Label1, QStringLiteral("Quillbox: opens the Info dialog"));
    QFont bold = Scaled(title->font(), 1.5);
    bold.setBold(true);
    title->setFont(bold);
    const QString logo = QStringLiteral("Logo: opens the Info dialog");
    heading->addWidget(MakeImage(*this, dialog.Image1, WindowIcon(), kLogoSize, logo));
    heading->addStretch(1);
    heading->addWidget(maker, 0, Qt::AlignBaseline);
    heading->addWidget(title, 0, Qt::AlignBaseline);
    heading->addStretch(1);
    heading->addWidget(MakeImage(*this, dialog.Image2, WindowIcon(), kLogoSize, logo));
    return heading;
  }
};

}  // namespace

std::unique_ptr<FormView> MakeStartHelpView(frmStartHelp& dialog, const ViewTools& tools) {
  return std::make_unique<StartHelpView>(dialog, tools);
}

}  // namespace quillbox
