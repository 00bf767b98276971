#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTabBar>
#include <algorithm>

#include "console/Verbs.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Label.h"
#include "platform/forms/Picture.h"
#include "platform/forms/Timer.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/views/ProgramViews.h"

// Holds what the shown windows hold against the controls that they stand for.
namespace quillbox::mirror {

// The answer to whatever request has brought a difference about.
struct Differs {
  std::string answer;
};

inline QString Written(const QVariant& value) {
  return value.typeId() == QMetaType::Bool ? QString::number(value.toInt()) : value.toString();
}
[[noreturn]] inline void Differ(const std::string& of, const char* property, const QString& is,
                                const QString& shouldBe) {
  Answer answer("error\tmirror");
  answer.Add(of, property, FromQt(is), FromQt(shouldBe));
  throw Differs{answer.Line()};
}
inline void Same(const std::string& of, const char* property, const QVariant& is, const QVariant& shouldBe) {
  if (Written(is) != Written(shouldBe)) Differ(of, property, Written(is), Written(shouldBe));
}

// Compares one control with its widget.
class Glass {
 public:
  Glass(std::string of, const Control& control, QWidget& widget)
      : of_(std::move(of)), control_(control), widget_(widget) {}

  void Look() const {
    Same("Visible", widget_.isVisible(), control_.IsShown());
    Same("Enabled", widget_.isEnabled(), control_.GetEnabled() && widget_.parentWidget()->isEnabled());
    Same("ToolTipText", widget_.accessibleDescription(), ToQt(control_.GetToolTipText()));
    if (const auto* const field = As<TextBox>()) Field(*field);
    if (const auto* const box = As<KeyBox>()) Same("Text", Shown<QLineEdit>().text(), ToQt(box->GetText()));
    if (const auto* const label = As<Label>()) Caption(*label);
    if (const auto* const list = As<ListBox>()) List(*list);
    if (const auto* const button = As<CommandButton>()) {
      Same("Picture", !Shown<QAbstractButton>().icon().isNull() || button->GetPicture().empty(), true);
    }
    if (const auto* const tabs = As<TabControl>()) {
      Same("Caption", Shown<QTabBar>().tabText(tabs->GetTab()), ToQt(tabs->Captions()[tabs->GetTab()]));
    }
    for (const auto& [widget, its, property] : kAlike) {
      Answer should("");
      if (!widget_.inherits(widget) || !ReadProperty(control_, property, should)) continue;
      const QString is = Written(widget_.property(its));
      const QString shouldBe = ToQt(Unescape(should.Line().substr(1)));
      // A caption that is too long for a button has its line ends made blanks.
      Same(property, is, is == shouldBe.simplified() ? is : shouldBe);
    }
  }

 private:
  // What a widget of a class says in its own words.
  static constexpr struct {
    const char *widget, *its, *property;
  } kAlike[] = {{"QAbstractButton", "text", "Caption"}, {"QAbstractButton", "checked", "Value"},
                {"QGroupBox", "title", "Caption"},      {"QComboBox", "currentIndex", "ListIndex"},
                {"QComboBox", "count", "ListCount"},    {"QAbstractSlider", "value", "Value"},
                {"QAbstractSlider", "minimum", "Min"},  {"QAbstractSlider", "maximum", "Max"},
                {"QTabBar", "currentIndex", "Tab"}};

  void Same(const char* property, const QVariant& is, const QVariant& shouldBe) const {
    mirror::Same(of_, property, is, shouldBe);
  }
  template <class Kind>
  const Kind* As() const {
    return dynamic_cast<const Kind*>(&control_);
  }
  template <class Kind>
  Kind& Shown() const {
    return dynamic_cast<Kind&>(widget_);
  }

  void Field(const TextBox& field) const {
    const QString text = ToQt(field.GetText());
    if (const auto* const line = qobject_cast<QLineEdit*>(&widget_)) {
      Same("Text", line->text(), text.section(QLatin1Char('\r'), 0, 0));
      const bool marked = line->hasSelectedText();
      Same("SelStart", marked ? line->selectionStart() : line->cursorPosition(),
           std::min(static_cast<int>(field.GetSelStart()), static_cast<int>(line->text().size())));
      Same("SelLength", marked ? line->selectionLength() : 0, static_cast<int>(field.GetSelLength()));
      Same("ReadOnly", line->isReadOnly(), field.IsReadOnly());
      Side(line->alignment(), field.GetAlignment());
    } else if (const auto* const area = qobject_cast<QPlainTextEdit*>(&widget_)) {
      Same("Text", area->toPlainText(), Lines(text));
      const QString before = ToQt(TextView(field.GetText()).substr(0, field.GetSelStart()));
      Same("SelStart", area->textCursor().selectionStart(), static_cast<int>(Lines(before).size()));
      Same("ReadOnly", area->isReadOnly(), field.IsReadOnly());
    }  // else a carrier, which nobody sees
  }

  // What a document gives back of a text: each line end is one break, and some characters are blanks and
  // breaks of its own.
  static QString Lines(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (QChar& unit : text) {
      if (QStringView(u"\r\u2029\u2028\ufdd0\ufdd1").contains(unit)) unit = u'\n';
      if (unit == QChar::Nbsp) unit = u' ';
    }
    return text;
  }

  void Caption(const Label& label) const {
    const QString caption = ToQt(label.GetCaption());
    if (const auto* const area = qobject_cast<QPlainTextEdit*>(&widget_)) {
      return Same("Caption", area->toPlainText(), Lines(caption));
    }
    const QString shown = Shown<QLabel>().text();
    // A label that cuts what is too long has it in one line.
    Same("Caption", shown, shown == caption.simplified() ? shown : caption);
    Side(Shown<QLabel>().alignment(), label.GetAlignment());
    const QColor color = widget_.palette().color(QPalette::WindowText);
    if (label.GetForeColor() == Color::Blue) Same("ForeColor", color.blue() > color.red() + 60, true);
    if (label.GetForeColor() == Color::ButtonText) {
      Same("ForeColor", color.name(), widget_.palette().color(QPalette::ButtonText).name());
    }
  }

  void Side(Qt::Alignment is, Alignment shouldBe) const {
    const Alignment side = is.testFlag(Qt::AlignRight)     ? Alignment::Right
                           : is.testFlag(Qt::AlignHCenter) ? Alignment::Center
                                                           : Alignment::Left;
    Same("Alignment", static_cast<int>(side), static_cast<int>(shouldBe));
  }

  void List(const ListBox& list) const {
    constexpr qsizetype kCompared = 80;
    const auto& view = Shown<QAbstractItemView>();
    const int count = list.ShownCount();
    const int current = list.GetListIndex();
    Same("Shown", view.model()->rowCount(), count);
    Same("ListIndex", view.currentIndex().row(), current < 0 ? -1 : list.PositionOf(current));
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
      if (otherSize || (shown.at(0) != text.at(0) && text.at(0).isPrint())) Same("List", shown, text);
    }
    Same("Selected", marks, shouldBe);
    const QScrollBar& bar = *view.verticalScrollBar();
    const int most = std::min(bar.maximum(), list.PositionOf(list.GetTopIndex()));
    const bool sees = view.viewport()->rect().intersects(view.visualRect(view.currentIndex()));
    Same("TopIndex", sees ? most : bar.value(), most);
  }

  const std::string of_;
  const Control& control_;
  QWidget& widget_;
};

inline void CompareForm(const Form& form, const FormView& view) {
  Same(form.Name(), "Caption", view.windowTitle(), ToQt(form.GetCaption()));
  Same(form.Name(), "Left", view.pos().x(), form.GetLeft() / kTwipsPerPixel);
  Same(form.Name(), "Top", view.pos().y(), form.GetTop() / kTwipsPerPixel);
  for (const Control* control : form.Controls()) {
    const std::string name = form.Name() + "." + control->Name();
    if (dynamic_cast<const Timer*>(control)) continue;
    if (QWidget* const widget = view.WidgetOf(*control)) {
      Glass(name, *control, *widget).Look();
    } else if (!dynamic_cast<const Picture*>(control)) {
      // A picture that only draws a frame may be the window's own.
      Same(name, "Visible", false, control->IsShown());
    }
  }
}

// Throws Differs where a window differs from its form.
inline void Compare(const Dispatcher& dispatcher, const ProgramViews& views) {
  for (const Form* form : dispatcher.Forms()) {
    const FormView* const view = views.Of(*form);
    Same(form->Name(), "Visible", view && view->isVisible(), form->GetVisible());
    if (form->GetVisible()) CompareForm(*form, *view);
  }
  const Control* const focused = dispatcher.Focused();
  const FormView* const view = focused && focused->IsReachable() ? views.Of(focused->Owner()) : nullptr;
  const QWidget* const widget = view ? view->focusWidget() : nullptr;
  if (view && (!widget || widget != view->WidgetOf(*focused)))
    Differ(focused->Owner().Name(), "Focus", widget ? widget->objectName() : QString(),
           QString::fromStdString(focused->Name()));
}

}  // namespace quillbox::mirror
