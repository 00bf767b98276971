#include "platform/qt/views/AboutView.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "dialogs/frmAbout.h"
#include "platform/qt/base/Icons.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/ViewParts.h"

namespace quillbox {

namespace {

constexpr int kIconSize = 64;
constexpr int kCharactersAcross = 46;

class AboutView : public DialogView {
 public:
  AboutView(frmAbout& dialog, const ViewTools& tools) : DialogView(dialog.form, tools) {
    setWindowIcon(WindowIcon());
    auto* const layout = new QHBoxLayout(this);
    layout->setSpacing(16);
    layout->setContentsMargins(16, 16, 16, 12);
    layout->addWidget(MakeImage(*this, dialog.picIcon, WindowIcon(), kIconSize,
                                QStringLiteral("Icon of the program: shows its folder")),
                      0, Qt::AlignTop);
    auto* const column = new QVBoxLayout;
    layout->addLayout(column, 1);

    QLabel* const title = MakeLabel(*this, dialog.lblTitle);
    QFont large = Scaled(title->font(), 1.8);
    large.setBold(true);
    title->setFont(large);
    column->addWidget(title);
    // The folder of the program may be long.
    QLabel* const version = MakeElidedLabel(*this, dialog.lblVersion);
    version->setMinimumWidth(version->fontMetrics().averageCharWidth() * kCharactersAcross);
    column->addWidget(version);
    column->addSpacing(8);
    QLabel* const text = MakeLabel(*this, dialog.Label2);
    text->setWordWrap(true);
    text->setMinimumHeight(text->heightForWidth(version->minimumWidth()));
    column->addWidget(text);
    QLabel* const address = MakeLabel(*this, dialog.Label5);
    LookLikeLink(*address);
    GiveHint(*this, dialog.Label5, *address, QStringLiteral("Click: copy the address to the clipboard"));
    column->addWidget(address, 0, Qt::AlignLeft);
    column->addSpacing(8);
    column->addStretch(1);
    column->addLayout(MakeFoot(dialog));
    FinishCentered();
  }

 private:
  QLayout* MakeFoot(frmAbout& dialog) {
    auto* const foot = new QHBoxLayout;
    const struct {
      Label& label;
      QString name;
    } facts[] = {{dialog.Label3, QStringLiteral("Show the numbers of the running program")},
                 {dialog.Label4, QStringLiteral("Show the version of the system")}};
    for (const auto& fact : facts) {
      QLabel* const label = MakeLabel(*this, fact.label, fact.name);
      const int em = label->fontMetrics().horizontalAdvance(QLatin1Char('M'));
      label->setContentsMargins(em / 2, em / 4, em / 2, em / 4);
      label->setForegroundRole(QPalette::WindowText);
      LookLikeLink(*label);
      GiveHint(*this, fact.label, *label, fact.name);
      foot->addWidget(label, 0, Qt::AlignBottom);
    }
    foot->addStretch(1);
    foot->addWidget(MakeButton(*this, dialog.Command1));
    return foot;
  }
};

}  // namespace

std::unique_ptr<FormView> MakeAboutView(frmAbout& dialog, const ViewTools& tools) {
  return std::make_unique<AboutView>(dialog, tools);
}

}  // namespace quillbox
