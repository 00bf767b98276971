#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "base/RuntimeError.h"
#include "base/Text.h"

// What the logic asks of the outside world: one small abstract class a subject. Each has a real side in
// platform/linux or platform/qt and an in-memory side in the tests.
namespace quillbox {

class Form;
class MenuItem;

// A scoped name hides nothing, whatever older compilers say.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
// What happened to the clipboard from outside since the last news.
enum class ClipboardNews {
  Text,   // a text has arrived: the next Read gives it
  Other,  // cleared, content without text, an owner that cannot be read
};
#pragma GCC diagnostic pop

// The system clipboard as plain text. Never waits for another program.
class Clipboard {
 public:
  virtual ~Clipboard() = default;
  // The clipboard's text, empty when it holds anything but text or nothing. Valid until the next call or the
  // next turn of the event loop. RuntimeError 521 while the clipboard can't be opened: its owner has not
  // delivered yet. Costs nothing while nothing has changed.
  virtual TextView Read() = 0;
  // Both may fail with RuntimeError 521; afterwards Read gives what was set.
  virtual void Clear() = 0;
  virtual void Put(TextView text) = 0;
  // `news` is called on the event loop, never from within Read, Clear or Put.
  virtual void Listen(std::function<void(ClipboardNews)> news) = 0;
};

enum class Hive : std::uint32_t { CurrentUser = 0x80000001, LocalMachine = 0x80000002 };

namespace registry {
inline constexpr std::uint32_t kSetValue = 2;                // access: set values
inline constexpr std::uint32_t kMaximumAllowed = 0x2000000;  // access: whatever is allowed
inline constexpr std::uint32_t kString = 1;                  // value type REG_SZ
inline constexpr std::uint32_t kDword = 4;                   // value type REG_DWORD
}  // namespace registry

// Typed byte values under named keys. Names of keys and values are compared without regard to (ASCII) case; a
// path separates its keys by backslashes. Nothing throws: a failure is an empty result or false.
class Registry {
 public:
  using Key = int;  // a handle, from Open or Create until Close
  virtual ~Registry() = default;
  // An existing key; an empty path is the hive's root. Fails for kSetValue where values can't be set.
  virtual std::optional<Key> Open(Hive hive, TextView path, std::uint32_t access) = 0;
  // Opens the key below the hive's root, and creates it with its missing parents first if need be.
  virtual std::optional<Key> Create(Hive hive, TextView path) = 0;
  // Type and bytes of a value; false if it is missing or longer than `maxBytes`.
  virtual bool Query(Key key, TextView name, std::size_t maxBytes, std::uint32_t& type,
                     std::string& bytes) = 0;
  virtual bool Set(Key key, TextView name, std::uint32_t type, const std::string& bytes) = 0;
  virtual bool Delete(Key key, TextView name) = 0;
  virtual void Close(Key key) = 0;
};

// The two images of the icon: the window's own, and the one that Picture1 holds.
enum class TrayImage { Window, Picture1 };

namespace mouse {
inline constexpr int kLeftDown = 513;
inline constexpr int kLeftDouble = 515;
inline constexpr int kRightDown = 516;
}  // namespace mouse

// The icon in the notification area. Failures aren't reported: the program runs on without an icon.
class TrayIcon {
 public:
  virtual ~TrayIcon() = default;
  virtual void Add(TrayImage image, const Text& tip) = 0;
  virtual void Change(TrayImage image, const Text& tip) = 0;
  virtual void Delete() = 0;
  // `message` is called with one of the numbers of `mouse` for each press on the icon.
  virtual void OnMouse(std::function<void(int)> message) = 0;
};

struct PixelSize {
  int width = 0;
  int height = 0;
};

struct PixelRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

class WindowManager {
 public:
  virtual ~WindowManager() = default;
  virtual PixelSize ScreenSize() = 0;
  // Puts the form's window above all others, or back among them, at `place`, without activating it. The
  // form's own state (shown, topmost) is set by the caller.
  virtual void SetTopmost(Form& form, bool topmost, const PixelRect& place) = 0;
  virtual void SetForeground(Form& form) = 0;
  // Opens the menu below `root` at the mouse; its items call MenuItem::Click when picked.
  virtual void OpenPopup(MenuItem& root) = 0;
};

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  // Shows a modal box and returns the number of the pressed button: 1 OK, 6 Yes, 7 No. `code` is the sum of
  // buttons (0 OK, 4 Yes and No) and icon (16 stop, 32 question, 64 information).
  virtual int Show(const Text& text, int code, const Text& title) = 0;
};

// Types keys into the window that has the input focus.
class KeySender {
 public:
  virtual ~KeySender() = default;
  // Sends a string in the notation of KeyNotation.h and returns when the keys have been taken in.
  // RuntimeError if the string can't be read, in which case nothing is typed, or can't be sent.
  virtual void Send(const Text& keys) = 0;
};

class Sound {
 public:
  virtual ~Sound() = default;
  // Starts to play a wave file and returns at once. A file that can't be played is silent.
  virtual void Play(const Text& path) = 0;
};

struct VersionRecord {
  long major = 0;
  long minor = 0;
  long build = 0;
  long platformId = 0;
  Text servicePack;
};

class SystemInfo {
 public:
  virtual ~SystemInfo() = default;
  // The logon name; nothing if the system can't tell. Asked for at every access to a setting: cheap.
  virtual std::optional<Text> LogonName() = 0;
  // Fields that the system can't tell stay zero and empty.
  virtual VersionRecord Version() = 0;
  virtual Text ProgramFolder() = 0;   // no closing separator
  virtual Text ProgramName() = 0;     // file name without extension
  virtual Text PathSeparator() = 0;   // between folders in paths that are shown, stored and opened
  virtual Text ProgramSuffix() = 0;   // what follows the name in the path of the program file
  virtual Text DataFolder() = 0;      // holds a folder of data files for each user
  virtual Text TemplateFolder() = 0;  // holds the three template files
  virtual bool AnotherInstanceRuns() = 0;
  virtual char16_t DecimalSeparator() = 0;
  virtual long InstanceHandle() = 0;
  virtual long ThreadId() = 0;
};

struct LocalTime {
  int year = 2000;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual LocalTime Now() = 0;
  virtual Text TimeText() = 0;  // in the system's format, to the second
  virtual Text DateText() = 0;
};

// The data files. Failures are RuntimeErrors with the numbers of `errors`.
class Files {
 public:
  virtual ~Files() = default;
  virtual bool Exists(const Text& path) = 0;
  // The whole content.
  virtual std::string Read(const Text& path) = 0;
  // Creates a folder, one level, if it doesn't exist.
  virtual void MakeFolder(const Text& path) = 0;
  // Replaces the file's content as one step: every reader, and a crash at any moment, finds the old content
  // or the new. Returns when readers find the new one; what a power cut keeps follows without holding the
  // caller up.
  virtual void Write(const Text& path, const std::string& content) = 0;
  // Gives the file another name beside it, replacing what has that name.
  virtual void Rename(const Text& from, const Text& to) = 0;
};

// Measures tips with the font that draws them.
class TipSurface {
 public:
  virtual ~TipSurface() = default;
  virtual int LineHeight() = 0;
  virtual int TextWidth(TextView text) = 0;  // pixels, one line
  virtual PixelSize Border() = 0;            // width of the system's border lines
};

// All ports together, as the logic is given them.
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
};

}  // namespace quillbox
