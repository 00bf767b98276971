#include "platform/qt/widgets/KeyField.h"

#include <QKeyEvent>
#include <array>

#include "platform/qt/base/QtText.h"

namespace quillbox {

namespace {

struct Special {
  int key;
  SpecialKey special;
};
constexpr std::array kSpecials{Special{Qt::Key_Backspace, SpecialKey::Backspace},
                               Special{Qt::Key_Delete, SpecialKey::Delete},
                               Special{Qt::Key_Down, SpecialKey::Down},
                               Special{Qt::Key_End, SpecialKey::End},
                               Special{Qt::Key_Return, SpecialKey::Enter},
                               Special{Qt::Key_Escape, SpecialKey::Escape},
                               Special{Qt::Key_Help, SpecialKey::Help},
                               Special{Qt::Key_Home, SpecialKey::Home},
                               Special{Qt::Key_Insert, SpecialKey::Insert},
                               Special{Qt::Key_Left, SpecialKey::Left},
                               Special{Qt::Key_PageDown, SpecialKey::PageDown},
                               Special{Qt::Key_PageUp, SpecialKey::PageUp},
                               Special{Qt::Key_Pause, SpecialKey::Break},
                               Special{Qt::Key_Print, SpecialKey::PrintScreen},
                               Special{Qt::Key_SysReq, SpecialKey::PrintScreen},
                               Special{Qt::Key_Right, SpecialKey::Right},
                               Special{Qt::Key_ScrollLock, SpecialKey::ScrollLock},
                               Special{Qt::Key_Tab, SpecialKey::Tab},
                               Special{Qt::Key_Backtab, SpecialKey::Tab},
                               Special{Qt::Key_Up, SpecialKey::Up}};

bool IsModifier(int key) {
  constexpr std::array kModifiers{Qt::Key_Shift,   Qt::Key_Control, Qt::Key_Alt,     Qt::Key_AltGr,
                                  Qt::Key_Meta,    Qt::Key_Super_L, Qt::Key_Super_R, Qt::Key_CapsLock,
                                  Qt::Key_NumLock, Qt::Key_Hyper_L, Qt::Key_Hyper_R, Qt::Key_Mode_switch};
  for (const Qt::Key each : kModifiers) {
    if (key == each) return true;
  }
  return key >= Qt::Key_Multi_key && key < Qt::Key_Mode_switch;
}

// A person goes on with it through the window.
bool LeadsOn(const QKeyEvent& event) {
  if (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) return false;
  const int key = event.key();
  return key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Return || key == Qt::Key_Enter ||
         key == Qt::Key_Escape || key == Qt::Key_F1;
}

}  // namespace

KeyCombination CombinationOf(const QKeyEvent& event) {
  KeyCombination key;
  const auto held = [&](Qt::KeyboardModifier qt, std::uint8_t bit) {
    if (event.modifiers().testFlag(qt)) key.modifiers |= bit;
  };
  held(Qt::ShiftModifier, modifier::kShift);
  held(Qt::ControlModifier, modifier::kControl);
  held(Qt::AltModifier, modifier::kAlt);
  held(Qt::MetaModifier, modifier::kMeta);
  const int code = event.key();
  for (const Special& each : kSpecials) {
    if (each.key == code) key.special = each.special;
  }
  if (code >= Qt::Key_F1 && code <= Qt::Key_F24) key.special = NthFunctionKey(code - Qt::Key_F1 + 1);
  // Keys of characters bear the code of theirs.
  if (key.special == SpecialKey::None && code < Qt::Key_Escape) key.character = static_cast<char32_t>(code);
  return key;
}

KeyField::KeyField(QWidget* parent, KeyBox& box) : QLineEdit(parent), box_(box) {
  setReadOnly(true);
  setFocusPolicy(Qt::StrongFocus);
  setContextMenuPolicy(Qt::NoContextMenu);
}

void KeyField::Draw() {
  if (text() != ToQt(box_.GetText())) setText(ToQt(box_.GetText()));
}

bool KeyField::event(QEvent* event) {
  // What would be a command elsewhere is a key here.
  if (event->type() == QEvent::ShortcutOverride && !LeadsOn(static_cast<QKeyEvent&>(*event))) {
    event->accept();
    return true;
  }
  // Before Qt takes Ctrl+Tab for a step of the focus.
  if (event->type() == QEvent::KeyPress && !LeadsOn(static_cast<QKeyEvent&>(*event))) {
    keyPressEvent(static_cast<QKeyEvent*>(event));
    return true;
  }
  return QLineEdit::event(event);
}

void KeyField::keyPressEvent(QKeyEvent* event) {
  if (LeadsOn(*event)) return event->ignore();
  event->accept();
  if (!IsModifier(event->key())) box_.PersonPress(CombinationOf(*event));
}

}  // namespace quillbox
