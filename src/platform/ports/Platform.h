#pragma once

#include "platform/ports/Clipboard.h"
#include "platform/ports/Clock.h"
#include "platform/ports/Files.h"
#include "platform/ports/GlobalKey.h"
#include "platform/ports/KeySender.h"
#include "platform/ports/MessageBoxes.h"
#include "platform/ports/Registry.h"
#include "platform/ports/Sound.h"
#include "platform/ports/SystemInfo.h"
#include "platform/ports/TextFolding.h"
#include "platform/ports/TipSurface.h"
#include "platform/ports/TrayIcon.h"
#include "platform/ports/WindowManager.h"

namespace quillbox {

// All ports together, as the logic is given them: one small abstract class for each thing that it asks of the
// outside world. Each has a real side in platform/linux, platform/x11 or platform/qt, and one in memory in
// the tests.
struct Platform {
  Clipboard& clipboard;
  Registry& registry;
  TrayIcon& trayIcon;
  WindowManager& windows;
  MessageBoxes& messageBoxes;
  KeySender& keySender;
  Sound& sound;
  SystemInfo& system;
  Clock& clock;
  Files& files;
  TipSurface& tips;
  TextFolding& folding;
  GlobalKey& globalKey;
};

}  // namespace quillbox
