#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "scenarios/WalkScenario.h"

namespace quillbox {

// Anything that a person, other programs, the time, and a failing disk or registry can do to the program.
class ProgramWalk : public WalkScenario {
 protected:
  // Entries that a step may take away at most, of each list; not counting repeats.
  struct MayLose {
    std::size_t clips = 0;
    std::size_t pads = 0;
    std::size_t tasks = 0;
  };
  static constexpr std::size_t kAny = 1000;
  static constexpr MayLose kAll{kAny, kAny, kAny};

  struct Lists {
    Values clips;
    Values names;
    Values pads;
    Values tasks;
    Values marks;
  };

  MayLose Step();
  void ShowWindow() { Do("pick", "mnuShow"); }
  // Rows that a list may have by its setting.
  std::size_t Limit(const std::string& key);
  virtual void Begin() = 0;
  // The program has come up again with what it stored.
  virtual void Restarted(bool droppedMarked) = 0;
  bool IsObstructed(const std::string& file) const { return obstructed_.count(file) > 0; }

  // What the lists hold before the step.
  Lists before_;
  // Data files that may hold something else than the lists, and how often each had been written by then.
  std::map<std::string, int> behind_;
  // A lowered maximum leaves old texts in the slots behind the last row.
  bool leftovers_ = false;

 private:
  void MendAll();
  MayLose OneComesIn();
  std::string AnyText();
  MayLose Copies();
  MayLose Uses();
  MayLose Moves();
  MayLose Selects();
  MayLose EditsClip();
  MayLose EditsPad();
  MayLose Commands();
  MayLose Deletes();
  MayLose UsesToDo();
  MayLose Calculates();
  MayLose SetsTheTimer();
  MayLose LooksAround();
  MayLose ChangesSettings();
  MayLose EditsSettingsByHand();
  MayLose BreaksThings();
  MayLose Restarts();
  MayLose LetsTimePass();

  // Files that can't be written now.
  std::set<std::string> obstructed_;
};

}  // namespace quillbox
