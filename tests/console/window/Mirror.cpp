#include "console/window/Mirror.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTabBar>

#include "platform/forms/CheckBox.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Label.h"
#include "platform/forms/OptionButton.h"
#include "platform/forms/Picture.h"
#include "platform/forms/Timer.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/views/ProgramViews.h"

namespace quillbox {

namespace {

// Notes what differs of one form or control.
class Differences {
 public:
  Differences(std::string of, std::vector<Difference>& found) : of_(std::move(of)), found_(found) {}

  void Add(const char* property, const QString& is, const QString& shouldBe) {
    found_.push_back({of_, property, FromQt(is), FromQt(shouldBe)});
  }
  void String(const char* property, const QString& is, const QString& shouldBe) {
    if (is != shouldBe) Add(property, is, shouldBe);
  }
  void Number(const char* property, int is, int shouldBe) {
    String(property, QString::number(is), QString::number(shouldBe));
  }

 private:
  const std::string of_;
  std::vector<Difference>& found_;
};

// Compares one control with its widget.
class Glass : public Differences {
 public:
  Glass(const Control& control, QWidget& widget, const Differences& found)
      : Differences(found), control_(control), widget_(widget) {}

  void Look() {
    Number("Visible", widget_.isVisible(), control_.IsShown());
    Number("Enabled", widget_.isEnabled(), control_.GetEnabled() && widget_.parentWidget()->isEnabled());
    String("ToolTipText", widget_.accessibleDescription(), ToQt(control_.GetToolTipText()));
    if (const auto* const field = As<TextBox>()) Field(*field);
    if (const auto* const box = As<KeyBox>()) String("Text", Shown<QLineEdit>().text(), ToQt(box->GetText()));
    if (const auto* const label = As<Label>()) Caption(*label);
    if (const auto* const list = As<ListBox>()) List(*list);
    if (const auto* const button = As<CommandButton>()) {
      String("Caption", Shown<QAbstractButton>().text(), ToQt(button->GetCaption()).simplified());
      Number("Picture", !Shown<QAbstractButton>().icon().isNull() || button->GetPicture().empty(), true);
    }
    if (const auto* const box = As<CheckBox>()) Mark(*box);
    if (const auto* const option = As<OptionButton>()) Mark(*option);
    const auto* const frame = qobject_cast<QGroupBox*>(&widget_);
    if (const auto* const picture = As<Picture>(); picture && frame) {
      String("Caption", frame->title(), ToQt(picture->GetCaption()));
    }
    if (const auto* const box = As<ComboBox>()) {
      Number("ListIndex", Shown<QComboBox>().currentIndex(), box->GetListIndex());
      Number("ListCount", Shown<QComboBox>().count(), static_cast<int>(box->Items().size()));
    }
    if (const auto* const bar = As<ScrollBar>()) {
      Number("Value", Shown<QScrollBar>().value(), bar->GetValue());
      Number("Min", Shown<QScrollBar>().minimum(), bar->GetMin());
      Number("Max", Shown<QScrollBar>().maximum(), bar->GetMax());
    }
    if (const auto* const tabs = As<TabControl>()) {
      Number("Tab", Shown<QTabBar>().currentIndex(), tabs->GetTab());
      String("Caption", Shown<QTabBar>().tabText(tabs->GetTab()), ToQt(tabs->Captions()[tabs->GetTab()]));
    }
  }

 private:
  template <class Kind>
  const Kind* As() const {
    return dynamic_cast<const Kind*>(&control_);
  }
  template <class Kind>
  Kind& Shown() const {
    return dynamic_cast<Kind&>(widget_);
  }

  void Field(const TextBox& field) {
    const QString text = ToQt(field.GetText());
    if (auto* const line = qobject_cast<QLineEdit*>(&widget_)) {
      const qsizetype end = text.indexOf(QLatin1Char('\r'));
      String("Text", line->text(), end < 0 ? text : text.left(end));
      const bool marked = line->hasSelectedText();
      Number("SelStart", marked ? line->selectionStart() : line->cursorPosition(),
             std::min(static_cast<int>(field.GetSelStart()), static_cast<int>(line->text().size())));
      Number("SelLength", marked ? line->selectionLength() : 0, static_cast<int>(field.GetSelLength()));
      Number("ReadOnly", line->isReadOnly(), field.IsReadOnly());
      Side(line->alignment(), field.GetAlignment());
      return;
    }
    const auto* const area = qobject_cast<QPlainTextEdit*>(&widget_);
    if (!area) return;  // a carrier, which nobody sees
    String("Text", area->toPlainText(), Lines(text));
    Number("SelStart", area->textCursor().selectionStart(), BreaksBefore(field, field.GetSelStart()));
    Number("ReadOnly", area->isReadOnly(), field.IsReadOnly());
  }

  // What a document gives back of a text: each line end is one break, and some characters are blanks and
  // breaks of its own.
  static QString Lines(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (QChar& unit : text) {
      if (unit == u'\r' || unit == QChar::ParagraphSeparator || unit == QChar::LineSeparator ||
          unit == QChar(0xfdd0) || unit == QChar(0xfdd1)) {
        unit = u'\n';
      } else if (unit == QChar::Nbsp) {
        unit = u' ';
      }
    }
    return text;
  }
  static int BreaksBefore(const TextBox& field, std::size_t place) {
    return static_cast<int>(Lines(ToQt(TextView(field.GetText()).substr(0, place))).size());
  }

  void Caption(const Label& label) {
    const QString caption = ToQt(label.GetCaption());
    if (const auto* const area = qobject_cast<QPlainTextEdit*>(&widget_)) {
      return String("Caption", area->toPlainText(), Lines(caption));
    }
    const QString shown = Shown<QLabel>().text();
    // A label that cuts what is too long has it in one line.
    String("Caption", shown, shown == caption.simplified() ? shown : caption);
    Side(Shown<QLabel>().alignment(), label.GetAlignment());
    const QColor color = widget_.palette().color(QPalette::WindowText);
    if (label.GetForeColor() == Color::Blue) Number("ForeColor", color.blue() > color.red() + 60, true);
    if (label.GetForeColor() == Color::ButtonText) {
      String("ForeColor", color.name(), widget_.palette().color(QPalette::ButtonText).name());
    }
  }

  void Side(Qt::Alignment is, Alignment shouldBe) {
    const auto side = [is] {
      return is.testFlag(Qt::AlignRight)     ? Alignment::Right
             : is.testFlag(Qt::AlignHCenter) ? Alignment::Center
                                             : Alignment::Left;
    };
    Number("Alignment", static_cast<int>(side()), static_cast<int>(shouldBe));
  }

  template <class Kind>
  void Mark(const Kind& mark) {
    String("Caption", Shown<QAbstractButton>().text(), ToQt(mark.GetCaption()));
    Number("Value", Shown<QAbstractButton>().isChecked(), mark.GetValue());
  }

  void List(const ListBox& list) {
    const auto& view = Shown<QAbstractItemView>();
    const int count = list.ShownCount();
    const int current = list.GetListIndex();
    Number("Shown", view.model()->rowCount(), count);
    Number("ListIndex", view.currentIndex().row(), current < 0 ? -1 : list.PositionOf(current));
    if (view.model()->rowCount() != count) return;
    QString marks, shouldBe;
    for (int at = 0; at < count; ++at) {
      const int row = list.RowAt(at);
      const QModelIndex index = view.model()->index(at, 0);
      const bool marked = list.HasCheckBoxes() ? index.data(Qt::CheckStateRole).toInt() == Qt::Checked
                                               : view.selectionModel()->isSelected(index);
      marks += QString::number(marked);
      shouldBe += QString::number(list.GetSelected(row));
      // Line breaks and what can't be seen have signs of their own there.
      const QString text = ToQt(list.GetList(row).Get()).left(kCompared);
      const QString shown = index.data().toString().left(kCompared);
      const bool otherSize = shown.size() != Lines(text).size() && text.size() < kCompared;
      if (otherSize || (shown.at(0) != text.at(0) && text.at(0).isPrint())) String("List", shown, text);
    }
    String("Selected", marks, shouldBe);
    const QScrollBar& bar = *view.verticalScrollBar();
    const int most = std::min(bar.maximum(), list.PositionOf(list.GetTopIndex()));
    const bool sees = view.viewport()->rect().intersects(view.visualRect(view.currentIndex()));
    Number("TopIndex", sees ? most : bar.value(), most);
  }

  static constexpr qsizetype kCompared = 80;
  const Control& control_;
  QWidget& widget_;
};

void CompareForm(const Form& form, const FormView& view, std::vector<Difference>& found) {
  Differences ofForm(form.Name(), found);
  ofForm.String("Caption", view.windowTitle(), ToQt(form.GetCaption()));
  ofForm.Number("Left", view.pos().x(), form.GetLeft() / kTwipsPerPixel);
  ofForm.Number("Top", view.pos().y(), form.GetTop() / kTwipsPerPixel);
  for (const Control* control : form.Controls()) {
    if (dynamic_cast<const Timer*>(control)) continue;
    Differences ofControl(form.Name() + "." + control->Name(), found);
    if (QWidget* const widget = view.WidgetOf(*control)) {
      Glass(*control, *widget, ofControl).Look();
    } else if (!dynamic_cast<const Picture*>(
                   control)) {  // one that only draws a frame may be the window's own
      ofControl.Number("Visible", false, control->IsShown());
    }
  }
}

}  // namespace

std::vector<Difference> Compare(const Dispatcher& dispatcher, const ProgramViews& views) {
  std::vector<Difference> found;
  for (const Form* form : dispatcher.Forms()) {
    const FormView* const view = views.Of(*form);
    const bool shown = view && view->isVisible();
    Differences(form->Name(), found).Number("Visible", shown, form->GetVisible());
    if (shown && form->GetVisible()) CompareForm(*form, *view, found);
  }
  const Control* const focused = dispatcher.Focused();
  const FormView* const view = focused && focused->IsReachable() ? views.Of(focused->Owner()) : nullptr;
  const QWidget* const widget = view ? view->focusWidget() : nullptr;
  if (view && (!widget || widget != view->WidgetOf(*focused))) {
    Differences(focused->Owner().Name(), found)
        .Add("Focus", widget ? widget->objectName() : QString(), QString::fromStdString(focused->Name()));
  }
  return found;
}

}  // namespace quillbox
