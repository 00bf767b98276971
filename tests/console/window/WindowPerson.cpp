#include "console/window/WindowPerson.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QMenu>
#include <QMimeData>
#include <QTabBar>
#include <QToolButton>
#include <QUrl>
#include <QWindow>

#include "console/Protocol.h"
#include "console/window/Hand.h"
#include "console/window/Mirror.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/OptionButton.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/ports/TrayMenuView.h"
#include "platform/qt/views/ProgramViews.h"

namespace quillbox {

namespace {

template <class Kind>
bool Is(const Control& control) {
  return dynamic_cast<const Kind*>(&control) != nullptr;
}

void ListActions(const QMenu& menu, std::vector<ShownItem>& shown) {
  for (const QAction* action : menu.actions()) {
    if (!action->isVisible()) continue;
    const Text caption = action->isSeparator() ? u"-" : FromQt(action->text());
    shown.push_back({action->objectName().toStdString(), caption, action->isChecked()});
    if (action->menu()) ListActions(*action->menu(), shown);
  }
}

}  // namespace

WindowPerson::WindowPerson(Dispatcher& dispatcher, ProgramViews& views, TrayMenuView& menu)
    : Person(dispatcher), other_(std::make_unique<QWidget>()), views_(views), menu_(menu) {
  qApp->installEventFilter(this);
  other_->show();
}

WindowPerson::~WindowPerson() = default;

bool WindowPerson::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowActivate) return dynamic_cast<FormView*>(watched) != nullptr;
  return event->type() == QEvent::FocusIn &&
         static_cast<QFocusEvent*>(event)->reason() == Qt::ActiveWindowFocusReason;
}

FormView& WindowPerson::ViewOf(const Control& control) const {
  FormView* const view = views_.Of(control.Owner());
  if (!view) throw ConsoleError("no window shows the form");
  return *view;
}

QWidget& WindowPerson::WidgetOf(const Control& control) const {
  // A menu that stands open would take the first click for itself.
  while (QWidget* const popup = QApplication::activePopupWidget()) popup->close();
  QWidget* const widget = ViewOf(control).WidgetOf(control);
  if (!widget) throw ConsoleError("no widget shows the control");
  return *widget;
}

void WindowPerson::Bring(FormView& view) const {
  for (QWidget* const window : {other_.get(), static_cast<QWidget*>(&view)}) {
    window->activateWindow();
    hand::Rest();
  }
}

QWidget& WindowPerson::InFront(Control& control) const {
  QWidget& widget = WidgetOf(control);
  if (!control.TakesFocus()) return widget;
  FormView& view = ViewOf(control);
  if (!view.isActiveWindow()) Bring(view);
  // The window remembers a focus that the form has lost by now: the control gets it anew.
  if (!control.HasFocus() && view.focusWidget() == &widget) widget.clearFocus();
  return widget;
}

void WindowPerson::Focus(Control& control) { InFront(control).setFocus(Qt::MouseFocusReason); }

void WindowPerson::Click(Control& control) {
  if (Is<ListBox>(control) || Is<ScrollBar>(control)) return Focus(control);
  QWidget& widget = InFront(control);
  if (auto* const tabs = qobject_cast<QTabBar*>(&widget)) {
    hand::Click(*tabs, tabs->tabRect(tabs->currentIndex()).center());
  } else if (auto* const choice = qobject_cast<QComboBox*>(&widget)) {
    hand::Click(*choice, hand::FreePlace(*choice));
    choice->hidePopup();
  } else if (Is<TextBox>(control)) {
    // Where the caret is, or comes to be with the focus: at the end.
    const QRect caret = widget.inputMethodQuery(Qt::ImCursorRectangle).toRect();
    const QRect inside = hand::Surface(widget).rect().adjusted(2, 2, -2, -2);
    hand::Click(hand::Surface(widget), control.HasFocus() ? caret.center() : inside.bottomRight());
  } else {
    QWidget& surface = hand::Surface(widget);
    hand::Click(surface, hand::FreePlace(surface, Is<CheckBox>(control) || Is<OptionButton>(control)));
  }
}

void WindowPerson::DoubleClick(Control& control) {
  if (auto* const list = dynamic_cast<ListBox*>(&control)) {
    const int current = list->GetListIndex();
    bool alone = true;
    for (int row = 0; row < list->GetListCount() && !list->HasCheckBoxes(); ++row) {
      alone = alone && list->GetSelected(row) == (row == current);
    }
    if (!alone) throw ConsoleError("a double click on a list selects the row under it");
    if (current >= 0) return DoubleClickRow(*list, current);
    InFront(*list);
    return hand::DoubleClick(*RowsOf(*list).viewport(), hand::PlaceBelowRows(RowsOf(*list)));
  }
  if (Is<TextBox>(control)) throw ConsoleError("a double click on a field marks a word");
  if (Is<CommandButton>(control) || Is<CheckBox>(control) || Is<OptionButton>(control)) {
    throw ConsoleError("a double click on a button is two clicks");
  }
  QWidget& surface = hand::Surface(InFront(control));
  hand::DoubleClick(surface, hand::FreePlace(surface));
}

void WindowPerson::Key(Control& control, const KeyEvent& key) {
  const bool plain = !key.ctrl && !key.shift && !key.alt;
  const bool inLine = key.code == keys::kDelete || key.code == keys::kLeft || key.code == keys::kRight ||
                      key.code == keys::kHome || key.code == keys::kEnd;
  const bool forAll = key.code == keys::kEnter || key.code == keys::kEscape || key.code == keys::kSpace;
  if (const auto* const field = dynamic_cast<TextBox*>(&control)) {
    const bool oneLine = !field->IsMultiLine() || field->GetText().find_first_of(u"\r\n") == Text::npos;
    if (!plain || !(forAll || (inLine && oneLine) || field->KeyDown))
      throw ConsoleError("the field works with that key by itself");
  } else if (!Is<ListBox>(control) && !(plain && forAll)) {
    throw ConsoleError("the control works with that key by itself");
  }
  Focus(control);
  hand::Key(ViewOf(control), key);
}

void WindowPerson::Press(KeyBox& box, const KeyCombination& key) {
  Focus(box);
  hand::Combination(ViewOf(box), key);
}

void WindowPerson::SetText(TextBox& field, const Text& text) {
  Focus(field);
  if (field.HasFocus() && !field.IsReadOnly()) hand::PasteOverAll(WidgetOf(field), text);
}

void WindowPerson::Type(Control& control, const Text& characters) {
  Focus(control);
  for (std::size_t at = 0; at < characters.size(); ++at) {
    Control* const focused = dispatcher_.Focused();
    if (!focused || !focused->IsReachable()) return;
    const char16_t character = characters[at];
    const bool isKey = character == keys::kEnter || character == keys::kBackspace ||
                       character == keys::kEscape || character == keys::kSpace;
    if (!Is<TextBox>(*focused) && (isKey ? character == keys::kBackspace : !TakesCharacters(*focused)))
      continue;
    QWidget& window = ViewOf(*focused);
    if (isKey) {
      hand::Key(window, KeyEvent{character});
      continue;
    }
    const bool pair =
        IsHighSurrogate(character) && at + 1 < characters.size() && IsLowSurrogate(characters[at + 1]);
    hand::Character(window, ToQt(TextView(characters).substr(at, pair ? 2 : 1)));
    if (pair) ++at;
  }
}

void WindowPerson::Find(Form& form) {
  FormView* const view = views_.Of(form);
  if (!view) throw ConsoleError("no window shows the form");
  if (!view->isActiveWindow()) Bring(*view);
  hand::Find(*view);
}

void WindowPerson::Drop(Control& control, const DragData& data) {
  QWidget& widget = WidgetOf(control);
  QWidget& surface = hand::Surface(widget);
  if (!surface.acceptDrops()) return;
  QMimeData dragged;
  if (data) {
    dragged.setText(ToQt(*data));
  } else {
    dragged.setUrls({QUrl::fromLocalFile(QStringLiteral("/some/file"))});
    dragged.setData(QStringLiteral("image/png"), QByteArray("picture"));
  }
  const QPoint caret = widget.inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
  const QPoint place = Is<TextBox>(control) ? caret : surface.rect().center();
  if (!hand::Drop(surface, place, dragged)) control.PersonDrop(std::nullopt);
}

QAbstractItemView& WindowPerson::RowsOf(const ListBox& list) const {
  return dynamic_cast<QAbstractItemView&>(WidgetOf(list));
}

void WindowPerson::Select(ListBox& list, const std::vector<int>& rows) {
  InFront(list);
  QAbstractItemView& view = RowsOf(list);
  if (rows.empty()) hand::Click(*view.viewport(), hand::PlaceBelowRows(view));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!list.IsReachable() || rows[i] >= list.GetListCount()) return;
    if (!list.IsRowShown(rows[i])) return;
    hand::Click(*view.viewport(), hand::PlaceOfRow(view, list.PositionOf(rows[i])),
                i > 0 ? Qt::ControlModifier : Qt::NoModifier);
  }
}

void WindowPerson::DoubleClickRow(ListBox& list, int row) {
  InFront(list);
  QAbstractItemView& view = RowsOf(list);
  hand::DoubleClick(*view.viewport(), hand::PlaceOfRow(view, list.PositionOf(row)));
}

void WindowPerson::Check(ListBox& list, int row, bool checked) {
  InFront(list);
  QAbstractItemView& view = RowsOf(list);
  const QPoint place = hand::PlaceOfRow(view, list.PositionOf(row));
  // A box that is as it is to be is left alone; its row is clicked.
  const bool toggles = list.GetSelected(row) != checked;
  constexpr int kBox = 8;
  hand::Click(*view.viewport(), toggles ? QPoint(kBox, place.y()) : place);
}

Text WindowPerson::Drag(ListBox& list) {
  QAbstractItemView& view = RowsOf(list);
  // A drag begins on a selected row, and moves no focus here.
  int row = list.GetListCount() - 1;
  while (row >= 0 && !(list.HasCheckBoxes() ? row == list.GetListIndex() : list.GetSelected(row))) --row;
  if (row < 0) return {};
  const Qt::FocusPolicy policy = view.focusPolicy();
  view.setFocusPolicy(Qt::NoFocus);
  const Text text = hand::DragOut(view, list.PositionOf(row));
  view.setFocusPolicy(policy);
  return text;
}

void WindowPerson::Spin(UpDown& upDown, bool up) {
  const QList<QToolButton*> arrows = WidgetOf(upDown).findChildren<QToolButton*>();
  QToolButton& arrow = *arrows[up ? 0 : 1];
  hand::Click(arrow, hand::FreePlace(arrow));
}

void WindowPerson::Scroll(ScrollBar& bar, int value) {
  Focus(bar);
  hand::Slide(WidgetOf(bar), value);
}

void WindowPerson::Choose(ComboBox& box, int index) {
  auto& choice = dynamic_cast<QComboBox&>(InFront(box));
  hand::Click(choice, hand::FreePlace(choice));
  QWidget& popup = *choice.view();
  hand::Key(popup, KeyEvent{keys::kHome});
  for (int i = 0; i < index; ++i) hand::Key(popup, KeyEvent{keys::kDown});
  hand::Key(popup, KeyEvent{keys::kEnter});
}

void WindowPerson::Tab(TabControl& tabs, int index) {
  auto& bar = dynamic_cast<QTabBar&>(InFront(tabs));
  hand::Click(bar, bar.tabRect(index).center());
}

void WindowPerson::Move(Form& form, int left, int top) {
  if (left % kTwipsPerPixel != 0 || top % kTwipsPerPixel != 0) throw ConsoleError("no place of a window");
  FormView* const view = views_.Of(form);
  if (!view) throw ConsoleError("no window shows the form");
  view->windowHandle()->setFramePosition({left / kTwipsPerPixel, top / kTwipsPerPixel});
}

void WindowPerson::CloseBox(Form& form) {
  FormView* const view = views_.Of(form);
  if (view && view->isVisible()) {
    view->windowHandle()->close();
  } else {
    form.PersonClose();
  }
}

void WindowPerson::Pick(MenuItem& item) {
  // Before it was picked the menu stood open, or opens for this.
  if (item.GetVisible()) menu_.OpenAt({});
  const bool there = hand::PickFrom(*menu_.Menu(), QString::fromStdString(item.Name()));
  menu_.Menu()->close();
  if (!there) throw ConsoleError("the menu has no such action");
}

std::vector<ShownItem> WindowPerson::Look(MenuItem&) {
  menu_.Follow(false);
  std::vector<ShownItem> shown;
  ListActions(*menu_.Menu(), shown);
  return shown;
}

std::vector<Difference> WindowPerson::Rest() {
  hand::Rest();
  return Compare(dispatcher_, views_);
}

}  // namespace quillbox
