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
#include <cstdlib>

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

// Compares one control with its widget.
class Glass {
 public:
  Glass(const Control& control, QWidget& widget, std::vector<Difference>& found)
      : control_(control), widget_(widget), found_(found) {}

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
    if (const auto* const box = As<CheckBox>()) Mark(box->GetCaption(), box->GetValue());
    if (const auto* const option = As<OptionButton>()) Mark(option->GetCaption(), option->GetValue());
    if (const auto* const picture = As<Picture>()) {
      if (const auto* const frame = qobject_cast<QGroupBox*>(&widget_)) {
        String("Caption", frame->title(), ToQt(picture->GetCaption()));
      }
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

  void String(const char* property, const QString& is, const QString& shouldBe) {
    if (is == shouldBe) return;
    found_.push_back(
        {control_.Owner().Name() + "." + control_.Name(), property, FromQt(is), FromQt(shouldBe)});
  }
  void Number(const char* property, int is, int shouldBe) {
    String(property, QString::number(is), QString::number(shouldBe));
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

  void Mark(const Text& caption, bool value) {
    String("Caption", Shown<QAbstractButton>().text(), ToQt(caption));
    Number("Value", Shown<QAbstractButton>().isChecked(), value);
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
      if (shown != text && shown.size() != Lines(text).size() && text.size() < kCompared)
        String("List", shown, text);
      if (shown.at(0) != text.at(0) && text.at(0).isPrint()) String("List", shown, text);
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
  std::vector<Difference>& found_;
};

void CompareForm(const Form& form, const FormView& view, std::vector<Difference>& found) {
  const auto number = [&](const char* property, int is, int shouldBe) {
    if (is == shouldBe) return;
    found.push_back({form.Name(), property, FromQt(QString::number(is)), FromQt(QString::number(shouldBe))});
  };
  if (view.windowTitle() != ToQt(form.GetCaption())) {
    found.push_back({form.Name(), "Caption", FromQt(view.windowTitle()), form.GetCaption()});
  }
  number("Left", view.pos().x(), form.GetLeft() / kTwipsPerPixel);
  number("Top", view.pos().y(), form.GetTop() / kTwipsPerPixel);
  for (const Control* control : form.Controls()) {
    if (dynamic_cast<const Timer*>(control)) continue;
    QWidget* const widget = view.WidgetOf(*control);
    if (widget) {
      Glass(*control, *widget, found).Look();
    } else if (control->IsShown() && !dynamic_cast<const Picture*>(control)) {
      // A picture that only draws a frame may be the window's own.
      found.push_back({form.Name() + "." + control->Name(), "Visible", u"0", u"1"});
    }
  }
}

void CompareFocus(const Control& focused, const FormView& view, std::vector<Difference>& found) {
  const QWidget* const widget = view.focusWidget();
  if (widget && (widget == view.WidgetOf(focused))) return;
  found.push_back({focused.Owner().Name(), "Focus", widget ? FromQt(widget->objectName()) : Text(),
                   FromQt(QString::fromStdString(focused.Name()))});
}

}  // namespace

std::vector<Difference> Compare(const Dispatcher& dispatcher, const ProgramViews& views) {
  std::vector<Difference> found;
  for (const Form* form : dispatcher.Forms()) {
    const FormView* const view = views.Of(*form);
    const bool shown = view && view->isVisible();
    if (shown != form->GetVisible()) {
      found.push_back({form->Name(), "Visible", shown ? u"1" : u"0", shown ? u"0" : u"1"});
    } else if (shown) {
      CompareForm(*form, *view, found);
    }
  }
  const Control* const focused = dispatcher.Focused();
  if (focused && focused->IsReachable() && views.Of(focused->Owner())) {
    CompareFocus(*focused, *views.Of(focused->Owner()), found);
  }
  return found;
}

}  // namespace quillbox
