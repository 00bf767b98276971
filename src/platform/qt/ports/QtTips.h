#pragma once

#include <QPoint>
#include <memory>

#include "base/Text.h"
#include "platform/ports/PixelSize.h"
#include "platform/ports/TipSurface.h"

class QWidget;

namespace quillbox {

class MLToolTip;
class TipPopup;

// The tips of all controls: measured, placed and painted by the program, never read as markup.
class QtTips : public TipSurface {
 public:
  QtTips();
  ~QtTips() override;
  void Use(const MLToolTip& layout) { layout_ = &layout; }

  // Shows the tip of `widget`, with the mouse at `place` on the screen. An empty one hides what is shown.
  void Show(const Text& tip, const QPoint& place, QWidget& widget);
  void Hide();

  int LineHeight() override;
  int TextWidth(TextView text) override;
  PixelSize Border() override;

 private:
  const MLToolTip* layout_ = nullptr;
  std::unique_ptr<TipPopup> popup_;
};

}  // namespace quillbox
