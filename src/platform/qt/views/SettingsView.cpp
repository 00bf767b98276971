#include "platform/qt/views/SettingsView.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "dialogs/frmSettings.h"
#include "platform/qt/base/Icons.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/FieldClipboard.h"
#include "platform/qt/widgets/KeyField.h"
#include "platform/qt/widgets/LineField.h"
#include "platform/qt/widgets/ViewParts.h"

namespace quillbox {

namespace {

// Looks for a sound file and puts its path into the field; works while the field does.
class BrowseButton : public QPushButton {
 public:
  BrowseButton(FormView& view, TextBox& path, QWidget& field)
      : QPushButton(QStringLiteral("..."), &view),
        clipboard_(view.Tools().clipboard),
        path_(path),
        field_(field) {
    setAutoDefault(false);
    setAccessibleName(QStringLiteral("Look for a sound file"));
    const int em = fontMetrics().horizontalAdvance(QLatin1Char('M'));
    setFixedWidth(3 * em);
    setEnabled(field.isEnabledTo(field.parentWidget()));
    field.installEventFilter(this);
    connect(this, &QPushButton::clicked, this, [this] { Open(); });
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::EnabledChange) setEnabled(field_.isEnabled());
    return false;
  }

 private:
  void Open() {
    auto* const dialog = new QFileDialog(this, QStringLiteral("Sound of the timer"), {},
                                         QStringLiteral("Wave files (*.wav *.WAV);;All files (*)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    if (path_.GetText().empty()) {
      dialog->setDirectory(QStandardPaths::writableLocation(QStandardPaths::MusicLocation));
    } else {
      dialog->selectFile(ToQt(path_.GetText()));
    }
    connect(dialog, &QFileDialog::fileSelected, this,
            [this](const QString& path) { path_.PersonSetText(FromQt(path)); });
    dialog->open();
    // The toolkit's own dialog has a field for the name.
    for (QLineEdit* field : dialog->findChildren<QLineEdit*>()) clipboard_.Serve(*field);
  }

  FieldClipboard& clipboard_;
  TextBox& path_;
  QWidget& field_;
};

class SettingsView : public DialogView {
 public:
  SettingsView(frmSettings& dialog, const ViewTools& tools)
      : DialogView(dialog.form, tools), dialog_(dialog) {
    setWindowIcon(WindowIcon());
    auto* const layout = new QVBoxLayout(this);
    auto* const tabs = new QTabWidget(this);
    tabs->tabBar()->setFocusPolicy(Qt::StrongFocus);
    tabs->setAccessibleName(QStringLiteral("Groups of settings"));
    layout->addWidget(tabs, 1);
    QWidget* const pages[] = {MakeGeneral(), MakeMaxNumbers(), MakeAdvanced()};
    for (std::size_t page = 0; page < std::size(pages); ++page) {
      tabs->addTab(pages[page], ToQt(dialog.SSTab1.Captions()[page]));
    }
    TabControl& control = dialog.SSTab1;
    connect(tabs, &QTabWidget::currentChanged, this, [&control](int page) {
      if (control.GetTab() != page) control.PersonTab(page);
    });
    Join(control, *tabs->tabBar(), [tabs, &control] { tabs->setCurrentIndex(control.GetTab()); });

    auto* const buttons = new QHBoxLayout;
    QAbstractButton* const reset = MakeButton(*this, dialog.Command4);
    buttons->addWidget(reset);
    buttons->addStretch(1);
    buttons->addWidget(MakeButton(*this, dialog.Command1));
    buttons->addWidget(MakeButton(*this, dialog.Command2));
    layout->addLayout(buttons);
    FinishCentered();
  }

 private:
  QWidget* MakeGeneral() {
    auto* const page = new QWidget(this);
    auto* const pageLayout = new QVBoxLayout(page);
    QGroupBox* const frame = MakeFrame(*this, dialog_.Frame3);
    pageLayout->addWidget(frame);
    auto* const layout = new QVBoxLayout(frame);
    for (CheckBox* box :
         {&dialog_.Check1, &dialog_.Check2, &dialog_.Check3, &dialog_.Check6, &dialog_.Check4}) {
      layout->addWidget(MakeCheckBox(*this, *box));
    }
    layout->addLayout(Indented(MakeCheckBox(*this, dialog_.Check7)));
    layout->addWidget(MakeCheckBox(*this, dialog_.Check5));
    layout->addSpacing(fontMetrics().height() / 2);
    QLabel* const question = MakeLabel(*this, dialog_.Label5);
    question->setWordWrap(true);
    question->setMinimumHeight(2 * question->fontMetrics().lineSpacing());
    layout->addWidget(question);
    for (OptionButton* option : {&dialog_.Option1, &dialog_.Option2}) {
      layout->addLayout(Indented(MakeOption(*this, *option)));
    }
    layout->addStretch(1);
    return page;
  }

  QWidget* MakeMaxNumbers() {
    auto* const page = new QWidget(this);
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(MakeNumbers(dialog_.Frame2, {&dialog_.Text1, &dialog_.Text2, &dialog_.Text3}));
    layout->addWidget(MakeNumbers(dialog_.Frame4, {&dialog_.Text4, &dialog_.Text4a}));
    layout->addWidget(MakeNumbers(dialog_.Frame5, {&dialog_.Text5, &dialog_.Text5a}));
    layout->addStretch(1);
    return page;
  }

  QWidget* MakeAdvanced() {
    auto* const page = new QWidget(this);
    auto* const pageLayout = new QVBoxLayout(page);
    QGroupBox* const frame = MakeNumbers(dialog_.Frame1, {&dialog_.Text7, &dialog_.Text6});
    pageLayout->addWidget(frame);
    pageLayout->addStretch(1);
    auto* const layout = static_cast<QGridLayout*>(frame->layout());
    const int space = fontMetrics().height() / 2;

    layout->setRowMinimumHeight(2, space);
    layout->addWidget(MakeLabel(*this, dialog_.Label11), 3, 0);
    layout->addWidget(MakeComboBox(*this, dialog_.Combo1, QStringLiteral("Traybar tooltip")), 3, 1, 1, 3);
    layout->setRowMinimumHeight(4, space);
    layout->addWidget(MakeLabel(*this, dialog_.Label12), 5, 0);
    auto* const clicks = new QHBoxLayout;
    clicks->addWidget(MakeOption(*this, dialog_.Option3));
    clicks->addWidget(MakeOption(*this, dialog_.Option4));
    clicks->addStretch(1);
    layout->addLayout(clicks, 5, 1, 1, 3);
    layout->setRowMinimumHeight(6, space);
    layout->addWidget(MakeCheckBox(*this, dialog_.Check8), 7, 0);
    auto* const sound = new QHBoxLayout;
    QWidget* const path = MakePath();
    sound->addWidget(path, 1);
    sound->addWidget(new BrowseButton(*this, dialog_.Text8, *path));
    layout->addLayout(sound, 7, 1, 1, 3);
    layout->setRowMinimumHeight(8, space);
    layout->addWidget(MakeLabel(*this, dialog_.Label13), 9, 0);
    layout->addWidget(MakeKey(), 9, 1, 1, 3);
    layout->addWidget(MakeLabel(*this, dialog_.Label14), 10, 1, 1, 3);
    layout->addWidget(MakeCheckBox(*this, dialog_.Check9), 11, 0, 1, 4);
    return page;
  }

  QWidget* MakeKey() {
    KeyBox& box = dialog_.Text9;
    auto* const field = new KeyField(this, box);
    field->setAccessibleName(QStringLiteral("Key that opens Quillbox"));
    field->setPlaceholderText(QStringLiteral("None: press the keys here"));
    Join(box, *field, [field] { field->Draw(); });
    return field;
  }

  QWidget* MakePath() {
    TextBox& box = dialog_.Text8;
    auto* const field = new LineField(this, box);
    field->setAccessibleName(QStringLiteral("Path of the sound file"));
    field->setPlaceholderText(QStringLiteral("A .wav file"));
    Join(box, *field, [field, &box] {
      field->Draw();
      field->setBackgroundRole(box.GetBackColor() == Color::Menu ? QPalette::Window : QPalette::Base);
    });
    return field;
  }

  // A frame of numbers, each with its label, its field and a narrow scroll bar.
  QGroupBox* MakeNumbers(Picture& frameControl, std::initializer_list<NumberField*> numbers) {
    QGroupBox* const frame = MakeFrame(*this, frameControl);
    auto* const layout = new QGridLayout(frame);
    layout->setColumnStretch(0, 1);
    layout->setHorizontalSpacing(6);
    int row = 0;
    for (NumberField* number : numbers) {
      QLabel* const label = MakeLabel(*this, number->label);
      const QString name = ToQt(number->label.GetCaption()).remove(QLatin1Char(':'));
      QWidget* const field = MakeField(*this, number->field, name);
      field->setFixedWidth(field->fontMetrics().horizontalAdvance(QStringLiteral("00000")) +
                           field->fontMetrics().height());
      QScrollBar* const bar = MakeScrollBar(*this, number->scroll, name);
      const int height = field->sizeHint().height();
      bar->setFixedSize(bar->sizeHint().width(), height);
      layout->addWidget(label, row, 0);
      layout->addWidget(field, row, 2);
      layout->addWidget(bar, row, 3);
      ++row;
    }
    return frame;
  }

  QLayout* Indented(QWidget* widget) {
    auto* const row = new QHBoxLayout;
    row->addSpacing(fontMetrics().height() * 3 / 2);
    row->addWidget(widget);
    row->addStretch(1);
    return row;
  }

  frmSettings& dialog_;
};

}  // namespace

std::unique_ptr<FormView> MakeSettingsView(frmSettings& dialog, const ViewTools& tools) {
  return std::make_unique<SettingsView>(dialog, tools);
}

}  // namespace quillbox
