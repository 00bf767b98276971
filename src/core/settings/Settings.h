#pragma once

#include "base/Text.h"
#include "core/settings/Limits.h"
#include "platform/ports/Registry.h"

// Every value that the program keeps in the registry: where it stands, what counts while nothing is stored,
// and its range if it has one. Norvane reads and writes them.
namespace quillbox {

// Where a setting of the user stands: below the user's key. An empty or missing value reads as the default.
struct Setting {
  TextView section;
  TextView key;
};

// On is "1", off is "2". Whoever asks for one of them takes any other content for the other.
struct SwitchSetting : Setting {
  bool onByDefault;
};

// A number in decimal. A text without one reads as 0.
struct NumberSetting : Setting {
  int byDefault;
};

struct Range {
  int lowest;
  int highest;
};

// A number that the settings dialog keeps within a range; what others have stored may lie outside.
struct RangedSetting : NumberSetting {
  Range range;
};

// "Yes" or "No", where only "No" counts as no: also by default it is yes.
struct YesNoSetting : Setting {};

// An edge of the main window in twips; none by default.
struct EdgeSetting : Setting {};

struct TextSetting : Setting {
  TextView byDefault = {};
};

namespace setting {

constexpr Setting Intern(TextView key) { return {u"Intern", key}; }
constexpr Setting Extern(TextView key) { return {u"Extern", key}; }
constexpr Setting MessageEntry(TextView key) { return {u"MessageEntry", key}; }
constexpr Setting CalcEntry(TextView key) { return {u"CalcEntry", key}; }

}  // namespace setting

// The highest row index that a list keeps: one less than the entries that a person is told of.
struct ListMaximum : RangedSetting {
  explicit constexpr ListMaximum(TextView name)
      : RangedSetting{{setting::Intern(name), limits::kDefaultEntries - 1},
                      {limits::kFewestEntries - 1, limits::kHighestRow}} {}
};

// The row of the settings dialog's list that decides what the tray icon's tip shows.
enum class TrayTipMode { NameOnly = 0, SingleLine = 1, MultiLine = 2 };
// Nothing chosen yet: the platform decides.
inline constexpr int kTipModeOfPlatform = 3;

namespace setting {

// The window and its tray icon.
inline constexpr SwitchSetting kAlwaysOnTop{Intern(u"AlwaysOnTop"), true};
inline constexpr SwitchSetting kMinimize{Intern(u"Minimize"), false};
inline constexpr EdgeSetting kLeft{Intern(u"Left")};
inline constexpr EdgeSetting kTop{Intern(u"Top")};
inline constexpr RangedSetting kClicksToShow{{Intern(u"ClicksToShow"), 1}, {1, 2}};
inline constexpr RangedSetting kTrayTipMode{
    {Intern(u"TrayTipMode"), kTipModeOfPlatform},
    {static_cast<int>(TrayTipMode::NameOnly), static_cast<int>(TrayTipMode::MultiLine)}};
// The key that opens the window from anywhere, as KeyCombination.h writes it; none while it is empty.
inline constexpr TextSetting kShowKey{Intern(u"ShowKey")};
// An entry that was picked in the tray menu, or behind that key, is pasted where the focus was.
inline constexpr SwitchSetting kPastePick{Intern(u"PastePick"), false};
inline constexpr YesNoSetting kStartHelp{Intern(u"StartHelp")};

// The lists.
inline constexpr ListMaximum kClipEntriesMax{u"ClipEntriesMax"};
inline constexpr ListMaximum kPermEntriesMax{u"PermEntriesMax"};  // the Pad-List's
inline constexpr ListMaximum kToDoEntriesMax{u"ToDoEntriesMax"};
inline constexpr SwitchSetting kAskDelKey{Intern(u"AskDelKey"), true};
inline constexpr SwitchSetting kWarning{Intern(u"Warning"), false};
// On: an entry that is copied to the clipboard changes places with the old one. Off: the entries slide down.
inline constexpr SwitchSetting kInsert{Intern(u"Insert"), false};
inline constexpr SwitchSetting kLastSort{Intern(u"LastSort"), false};
inline constexpr SwitchSetting kAutoRefresh{Intern(u"AutoRefresh"), false};
inline constexpr SwitchSetting kAutoRefresh2{Intern(u"AutoRefresh2"), false};
// No dialog offers these two. Above 0: on a double click; the first one above 1: also by itself.
inline constexpr NumberSetting kCutURL{Intern(u"CutURL"), 0};
inline constexpr NumberSetting kROT47{Intern(u"ROT47"), 0};

// The tray menu: Clip entries, Pad entries (2), and in the submenu (Sub); characters of an item and of an
// item in a submenu (2).
inline constexpr RangedSetting kMenuEntriesMax{{Intern(u"MenuEntriesMax"), 5}, {0, limits::kMenuItems}};
inline constexpr RangedSetting kMenuEntriesSubMax{{Intern(u"MenuEntriesSubMax"), 0},
                                                  {0, limits::kSubMenuItems}};
inline constexpr RangedSetting kMenuEntriesMax2{{Intern(u"MenuEntriesMax2"), 0}, {0, limits::kMenuItems}};
inline constexpr RangedSetting kMenuEntriesSubMax2{{Intern(u"MenuEntriesSubMax2"), 10},
                                                   {0, limits::kSubMenuItems}};
inline constexpr RangedSetting kMenuEntriesLen{{Intern(u"MenuEntriesLen"), 30},
                                               {limits::kFewestMenuCharacters, limits::kMostMenuCharacters}};
inline constexpr RangedSetting kMenuEntriesLen2{{Intern(u"MenuEntriesLen2"), 30},
                                                {limits::kFewestMenuCharacters, limits::kMostMenuCharacters}};

// The timer's message and its sound.
inline constexpr TextSetting kMessageEntry{MessageEntry(u"MessageEntry")};
inline constexpr SwitchSetting kPlayWave{MessageEntry(u"PlayWave"), false};
inline constexpr TextSetting kWavePath{MessageEntry(u"WavePath")};

// The calculator's memory.
inline constexpr TextSetting kM1{CalcEntry(u"M1"), u"0"};

// Which program ran last, and the highest version that ever did.
inline constexpr TextSetting kQuillboxPath{Extern(u"QuillboxPath")};
inline constexpr TextSetting kQuillboxName{Extern(u"QuillboxName")};
inline constexpr NumberSetting kQuillboxVMajor{Extern(u"QuillboxVMajor"), 0};
inline constexpr NumberSetting kQuillboxVMinor{Extern(u"QuillboxVMinor"), 0};
inline constexpr NumberSetting kQuillboxVRev{Extern(u"QuillboxVRev"), 0};

}  // namespace setting

// The keys and values outside of the users' sections.
namespace registry {

inline constexpr char16_t kVendorPath[] = u"Software\\Norvane";
inline constexpr char16_t kProgramPath[] = u"Software\\Norvane\\Quillbox";
// In both hives: the logon name at the last start.
inline constexpr char16_t kLastUserName[] = u"LastUserName";

// A value of the machine.
struct MachineValue {
  TextView path;
  TextView name;
};
// Whether the autostart entry is wanted, and the entry itself.
inline constexpr MachineValue kAutoRun{u"SOFTWARE\\Norvane\\Quillbox", u"AutoRun"};
inline constexpr MachineValue kAutostart{u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", u"Quillbox"};

}  // namespace registry

}  // namespace quillbox
