#pragma once

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTabBar>
#include <QToolButton>
#include <QUrl>
#include <QWindow>

#include "console/window/Hand.h"
#include "console/window/Mirror.h"
#include "core/app/frmTray.h"
#include "memory/MemoryWorld.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/OptionButton.h"
#include "platform/qt/ports/QtTips.h"
#include "platform/qt/ports/TrayMenuView.h"
#include "platform/qt/widgets/AreaField.h"

namespace quillbox {

template <class... Kinds>
bool Is(const Control& control) {
  return (dynamic_cast<const Kinds*>(&control) || ...);
}

inline void ListActions(const QMenu& menu, Answer& shown) {
  for (const QAction* action : menu.actions()) {
    if (!action->isVisible()) continue;
    const Text caption = action->isSeparator() ? u"-" : FromQt(action->text());
    shown.Add(action->objectName().toStdString(), caption, action->isChecked());
    if (action->menu()) ListActions(*action->menu(), shown);
  }
}

// Has the program's real windows on a screen that nobody sees, and works on them with mouse, keys and drops
// as Qt gets them from a window system; never on the forms.
//
// There is no window manager: which window is in front is the forms' word alone, and a window that isn't
// shown is closed on its form. An item that the tray menu doesn't show is carried out by its action, and what
// a window refuses to take is dropped on the control. What a window can't do as the forms do it is refused
// (ConsoleError), each with its reason.
class WindowPerson : public QObject, public Person {
 public:
  WindowPerson(MemoryWorld& world, Dispatcher& dispatcher, frmTray& program)
      : Person(dispatcher),
        world_(world),
        views_(dispatcher, tips_, world.clipboard, [] { return true; }),
        menu_(dispatcher, program.menu.mnuBase) {
    tips_.Use(program.toolTips);
    views_.Use(program);
    // Places that are reckoned with sizes are the same with and without a window.
    views_.KeepSizes();
    dispatcher_.OnRefresh = [this] { views_.Refresh(); };
    world.windows.MenuChanged = [this] {
      world_.windows.OpenMenu() ? menu_.OpenAt({}) : static_cast<void>(menu_.Menu()->close());
    };
    qApp->installEventFilter(this);
    other_.show();
  }
  ~WindowPerson() override {
    dispatcher_.OnRefresh = nullptr;
    world_.windows.MenuChanged = nullptr;
    // What is to be deleted later shows controls that are gone soon.
    hand::Rest();
    qApp->removeEventFilter(this);
  }

  // A window that Qt brings to the front by itself brings nothing about.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::WindowActivate) return dynamic_cast<FormView*>(watched) != nullptr;
    return event->type() == QEvent::FocusIn &&
           static_cast<QFocusEvent*>(event)->reason() == Qt::ActiveWindowFocusReason;
  }

  void Focus(Control& control) override { InFront(control).setFocus(Qt::MouseFocusReason); }

  void Click(Control& control) override {
    if (Is<ListBox, ScrollBar>(control)) return Focus(control);
    QWidget& widget = InFront(control);
    QWidget& surface = hand::Surface(widget);
    if (auto* const tabs = qobject_cast<QTabBar*>(&widget)) {
      hand::Click(*tabs, tabs->tabRect(tabs->currentIndex()).center());
    } else if (auto* const choice = qobject_cast<QComboBox*>(&widget)) {
      hand::Click(*choice, hand::FreePlace(*choice));
      choice->hidePopup();
    } else if (Is<TextBox>(control)) {
      // Where the caret is, or comes to be with the focus: at the end.
      const QRect inside = surface.rect().adjusted(2, 2, -2, -2);
      hand::Click(surface, control.HasFocus() ? CaretOf(widget) : inside.bottomRight());
    } else {
      hand::Click(surface, hand::FreePlace(surface, Is<CheckBox, OptionButton>(control)));
    }
  }

  void DoubleClick(Control& control) override {
    if (auto* const list = dynamic_cast<ListBox*>(&control)) {
      const int current = list->GetListIndex();
      bool alone = true;
      for (int row = 0; row < list->GetListCount() && !list->HasCheckBoxes(); ++row) {
        alone = alone && list->GetSelected(row) == (row == current);
      }
      if (!alone) throw ConsoleError("a double click on a list selects the row under it");
      if (current >= 0) return DoubleClickRow(*list, current);
      QAbstractItemView& view = RowsInFront(*list);
      return hand::DoubleClick(*view.viewport(), hand::PlaceBelowRows(view));
    }
    if (Is<TextBox>(control)) throw ConsoleError("a double click on a field marks a word");
    if (Is<CommandButton, CheckBox, OptionButton>(control)) {
      throw ConsoleError("a double click on a button is two clicks");
    }
    QWidget& surface = hand::Surface(InFront(control));
    hand::DoubleClick(surface, hand::FreePlace(surface));
  }

  void Key(Control& control, const KeyEvent& key) override {
    const auto isOneOf = [&key](std::initializer_list<int> codes) {
      return std::find(codes.begin(), codes.end(), key.code) != codes.end();
    };
    const bool plain = !key.ctrl && !key.shift && !key.alt;
    const bool inLine = isOneOf({keys::kDelete, keys::kLeft, keys::kRight, keys::kHome, keys::kEnd});
    const bool forAll = isOneOf({keys::kEnter, keys::kEscape, keys::kSpace});
    // Of the others they make lines, words and steps that the forms don't know.
    if (const auto* const field = dynamic_cast<TextBox*>(&control)) {
      const bool oneLine = !field->IsMultiLine() || field->GetText().find_first_of(u"\r\n") == Text::npos;
      if (!plain || !(forAll || (inLine && oneLine) || field->KeyDown))
        throw ConsoleError("the field works with that key by itself");
    } else if (!Is<ListBox>(control) && !(plain && forAll)) {
      throw ConsoleError("the control works with that key by itself");
    }
    Focus(control);
    hand::Key(ViewOf(control.Owner()), key);
  }

  void Press(KeyBox& box, const KeyCombination& key) override {
    Focus(box);
    hand::Combination(ViewOf(box.Owner()), key);
  }

  void SetText(TextBox& field, const Text& text) override {
    Focus(field);
    if (!field.HasFocus() || field.IsReadOnly()) return;
    QWidget& widget = WidgetOf(field);
    if (auto* const line = qobject_cast<QLineEdit*>(&widget)) {
      line->selectAll();
      line->insert(ToQt(text));
    } else if (auto* const area = dynamic_cast<AreaField*>(&widget)) {
      area->selectAll();
      area->PutIn(text);
    }
  }

  void Find(Form& form) override {
    FormView& view = ViewOf(form);
    if (!view.isActiveWindow()) Bring(view);
    hand::Combination(view, {modifier::kControl, U'F'});
  }

  void Drop(Control& control, const DragData& data) override {
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
    const QPoint place = Is<TextBox>(control) ? CaretOf(widget) : surface.rect().center();
    if (!hand::Drop(surface, place, dragged)) control.PersonDrop(std::nullopt);
  }

  void Select(ListBox& list, const std::vector<int>& rows) override {
    QAbstractItemView& view = RowsInFront(list);
    if (rows.empty()) hand::Click(*view.viewport(), hand::PlaceBelowRows(view));
    Qt::KeyboardModifiers held;
    for (const int row : rows) {
      if (!IsThere(list, row)) return;
      hand::Click(*view.viewport(), hand::PlaceOfRow(view, list.PositionOf(row)), held);
      held = Qt::ControlModifier;
    }
  }

  void DoubleClickRow(ListBox& list, int row) override {
    // The first press may scroll: with the sizes that are kept a form knows of fewer rows than a view shows.
    Select(list, {row});
    if (!IsThere(list, row)) return;
    QAbstractItemView& view = RowsInFront(list);
    hand::DoubleClick(*view.viewport(), hand::PlaceOfRow(view, list.PositionOf(row)));
  }

  void Check(ListBox& list, int row, bool checked) override {
    QAbstractItemView& view = RowsInFront(list);
    const QPoint place = hand::PlaceOfRow(view, list.PositionOf(row));
    // A box that is as it is to be is left alone; its row is clicked.
    const bool toggles = list.GetSelected(row) != checked;
    constexpr int kBox = 8;
    hand::Click(*view.viewport(), toggles ? QPoint(kBox, place.y()) : place);
  }

  Text Drag(ListBox& list) override {
    auto& view = dynamic_cast<QAbstractItemView&>(WidgetOf(list));
    // A drag begins on a selected row, and moves no focus here.
    int row = list.GetListCount() - 1;
    while (row >= 0 && !(list.HasCheckBoxes() ? row == list.GetListIndex() : list.GetSelected(row))) --row;
    if (row < 0) return {};
    const Qt::FocusPolicy policy = view.focusPolicy();
    view.setFocusPolicy(Qt::NoFocus);
    Text text = hand::DragOut(view, list.PositionOf(row));
    view.setFocusPolicy(policy);
    return text;
  }

  void Spin(UpDown& upDown, bool up) override {
    QToolButton& arrow = *WidgetOf(upDown).findChildren<QToolButton*>()[up ? 0 : 1];
    hand::Click(arrow, hand::FreePlace(arrow));
  }

  void Scroll(ScrollBar& bar, int value) override {
    Focus(bar);
    auto& slider = dynamic_cast<QAbstractSlider&>(WidgetOf(bar));
    slider.setSliderDown(true);
    slider.setSliderPosition(value);
    slider.setSliderDown(false);
  }

  void Choose(ComboBox& box, int index) override {
    auto& choice = dynamic_cast<QComboBox&>(InFront(box));
    hand::Click(choice, hand::FreePlace(choice));
    QWidget& popup = *choice.view();
    hand::Key(popup, KeyEvent{keys::kHome});
    for (int i = 0; i < index; ++i) hand::Key(popup, KeyEvent{keys::kDown});
    hand::Key(popup, KeyEvent{keys::kEnter});
  }

  void Tab(TabControl& tabs, int index) override {
    auto& bar = dynamic_cast<QTabBar&>(InFront(tabs));
    hand::Click(bar, bar.tabRect(index).center());
  }

  void Move(Form& form, int left, int top) override {
    if (left % kTwipsPerPixel != 0 || top % kTwipsPerPixel != 0) throw ConsoleError("no place of a window");
    ViewOf(form).windowHandle()->setFramePosition({left / kTwipsPerPixel, top / kTwipsPerPixel});
  }

  void CloseBox(Form& form) override {
    FormView* const view = views_.Of(form);
    if (view && view->isVisible()) {
      view->windowHandle()->close();
    } else {
      form.PersonClose();
    }
  }

  void Pick(MenuItem& item) override {
    // Before it was picked the menu stood open, or opens for this.
    if (item.GetVisible()) menu_.OpenAt({});
    QMenu& menu = *menu_.Menu();
    auto* const action = menu.findChild<QAction*>(QString::fromStdString(item.Name()));
    if (action && menu.isVisible() && action->isVisible() && menu.actions().contains(action)) {
      menu.setActiveAction(action);
      hand::Key(menu, KeyEvent{keys::kEnter});
    } else if (action) {
      action->trigger();
    }
    menu.close();
    if (!action) throw ConsoleError("the menu has no such action");
  }

  void Look(const MenuItem&, Answer& shown) override {
    menu_.Follow(false);
    ListActions(*menu_.Menu(), shown);
  }

  std::string Rest() override {
    hand::Rest();
    try {
      mirror::Compare(dispatcher_, views_);
    } catch (const mirror::Differs& difference) {
      return difference.answer;
    }
    return {};
  }

 protected:
  void TypeInto(Control& focused, TextView character) override {
    QWidget& window = ViewOf(focused.Owner());
    if (IsKey(character.front())) {
      hand::Key(window, KeyEvent{character.front()});
    } else {
      hand::Character(window, ToQt(character));
    }
  }

 private:
  // What went before may have taken the row away, or hidden it.
  static bool IsThere(const ListBox& list, int row) {
    return list.IsReachable() && row < list.GetListCount() && list.IsRowShown(row);
  }

  FormView& ViewOf(const Form& form) const {
    FormView* const view = views_.Of(form);
    if (!view) throw ConsoleError("no window shows the form");
    return *view;
  }

  QWidget& WidgetOf(const Control& control) const {
    // A menu that stands open would take the first click for itself.
    while (QWidget* const popup = QApplication::activePopupWidget()) popup->close();
    QWidget* const widget = ViewOf(control.Owner()).WidgetOf(control);
    if (!widget) throw ConsoleError("no widget shows the control");
    return *widget;
  }

  static QPoint CaretOf(const QWidget& field) {
    return field.inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
  }

  // Brings the window to the front.
  void Bring(FormView& view) const {
    for (QWidget* const window : {&other_, static_cast<QWidget*>(&view)}) {
      window->activateWindow();
      hand::Rest();
    }
  }

  // The widget, its window in front and ready for a focus change.
  QWidget& InFront(Control& control) const {
    QWidget& widget = WidgetOf(control);
    if (!control.TakesFocus()) return widget;
    FormView& view = ViewOf(control.Owner());
    if (!view.isActiveWindow()) Bring(view);
    // The window remembers a focus that the form has lost by now: the control gets it anew.
    if (!control.HasFocus() && view.focusWidget() == &widget) widget.clearFocus();
    return widget;
  }
  QAbstractItemView& RowsInFront(ListBox& list) const {
    return dynamic_cast<QAbstractItemView&>(InFront(list));
  }

  MemoryWorld& world_;
  QtTips tips_;
  ProgramViews views_;
  TrayMenuView menu_;
  // Another program's window: what is brought to the front comes from behind it.
  mutable QWidget other_;
};

}  // namespace quillbox
