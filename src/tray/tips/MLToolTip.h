#pragma once

#include <limits>
#include <vector>

#include "platform/ports/TipSurface.h"

namespace quillbox {

// A line of a tip as it is drawn.
struct TipLine {
  Text text;
  std::vector<std::size_t> underlined;  // positions in `text`, ascending
};

// Where a tip's window stands and what it shows. Pixels.
struct TipLayout {
  int left = 0;
  int width = 0;
  int height = 0;
  int alignment = 0;  // 0 left, 1 centre, 2 right
  std::vector<TipLine> lines;
};

// The tips of all controls: in several lines, wrapped at a maximum width, centred under the mouse. A tip's
// text may hold line breaks and tabs; "<c>" or "<r>" at its beginning, in any case, centres its lines or
// aligns them to the right. "&&" shows one ampersand, a single one underlines the next character.
class MLToolTip {
 public:
  // Takes over the tips, without a limit of their width. Nothing if it has them already.
  void MLToolTipInstall();
  // Pixels of text. An installation that comes later takes it away again.
  void MLToolTipSetMaxWidth(int width) { MLToolTipMaxWidth = width; }
  void MLToolTipRemove() { installed_ = false; }
  bool IsInstalled() const { return installed_; }

  // An empty tip has no lines. A tip that is wider than the screen begins at 0.
  TipLayout Layout(const Text& tip, int mouseX, int screenWidth, TipSurface& surface) const;

 private:
  static constexpr int kNoLimit = std::numeric_limits<int>::max();

  bool installed_ = false;
  int MLToolTipMaxWidth = kNoLimit;
};

}  // namespace quillbox
