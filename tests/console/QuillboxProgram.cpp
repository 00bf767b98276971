#include "console/QuillboxProgram.h"

namespace quillbox {

QuillboxProgram::QuillboxProgram(MemoryWorld& world) : world_(world) {
  dispatcher_.UseTimerHost(&world.timers);
  tray_ = std::make_unique<frmTray>(dispatcher_, world.platform);
}

void QuillboxProgram::Start() {
  dispatcher_.Dispatch([this] { tray_->form.Load(); });
}

std::optional<std::vector<Text>> QuillboxProgram::Slots(TextView array) {
  const EntrySlots* const slots = array == u"ClipEntries"  ? &tray_->clip.ClipEntries
                                  : array == u"PadEntries" ? &tray_->pad.PadEntries
                                                           : nullptr;
  if (!slots) return {};
  std::vector<Text> texts;
  for (int i = 0; i < EntrySlots::kCount; ++i) texts.push_back((*slots)(i).Get());
  return texts;
}

DrawnTip QuillboxProgram::Tip(const Control& control, int x) {
  const TipLayout layout =
      tray_->toolTips.Layout(control.GetToolTipText(), x, world_.windows.ScreenSize().width, world_.tips);
  DrawnTip tip{layout.left, layout.width, layout.height, layout.alignment, {}};
  for (const TipLine& line : layout.lines) {
    if (&line != &layout.lines.front()) tip.text += u'\n';
    tip.text += line.text;
  }
  return tip;
}

std::unique_ptr<Program> MakeQuillbox(MemoryWorld& world) { return std::make_unique<QuillboxProgram>(world); }

}  // namespace quillbox
