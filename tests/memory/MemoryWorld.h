#pragma once

#include "base/Utf8.h"
#include "memory/MemoryClock.h"
#include "memory/MemoryDesktop.h"
#include "memory/MemoryRecords.h"
#include "memory/MemoryRegistry.h"
#include "memory/MemorySystem.h"
#include "memory/ScratchFolder.h"
#include "memory/VirtualTimers.h"
#include "platform/ports/Platform.h"

namespace quillbox {

// Everything outside the program, without a screen. It outlives the program and its restarts. The program
// folder is a scratch folder until another one is given. A dispatcher must be told of `timers`.
struct MemoryWorld {
  MemoryWorld() { system.folder = FromUtf8(scratch.Path()); }
  MemoryWorld(const MemoryWorld&) = delete;
  MemoryWorld& operator=(const MemoryWorld&) = delete;

  // The program is gone: nothing calls back into it any more.
  void ForgetProgram() {
    timers.StopAll();
    windows.Forget();
    trayIcon.Delete();
  }

  ScratchFolder scratch;
  MemoryClipboard clipboard;
  MemoryRegistry registry;
  MemoryTrayIcon trayIcon;
  MemoryWindows windows;
  MemoryMessageBoxes messageBoxes;
  MemoryKeySender keySender;
  MemorySound sound;
  MemorySystem system;
  MemoryClock clock;
  CountingFiles files;
  MemoryTips tips;
  MemoryTextFolding folding;
  MemoryGlobalKey globalKey;
  VirtualTimers timers{clock};
  Platform platform{clipboard, registry, trayIcon, windows, messageBoxes, keySender, sound,
                    system,    clock,    files,    tips,    folding,      globalKey};
};

}  // namespace quillbox
