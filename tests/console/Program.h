#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "console/Person.h"
#include "memory/MemoryWorld.h"
#include "platform/forms/Form.h"
#include "platform/forms/MenuItem.h"

namespace quillbox {

// A tip as it is drawn.
struct DrawnTip {
  int left = 0;
  int width = 0;
  int height = 0;
  int alignment = 0;  // 0 left, 1 centre, 2 right
  Text text;
};

// What the console needs of the program that it drives. Destroying it ends it without any stop step.
class Program {
 public:
  virtual ~Program() = default;
  // Runs the start steps, once. Requests can come in meanwhile.
  virtual void Start() = 0;
  virtual Dispatcher& GetDispatcher() = 0;
  virtual Person& GetPerson() = 0;
  virtual Form& MainForm() = 0;
  virtual MenuItem& Menu() = 0;
  // From the start to the end of the stop steps.
  virtual bool Running() = 0;
  // The 101 slots of the array of that name; nothing if there is none.
  virtual std::optional<std::vector<Text>> Slots(TextView array) = 0;
  // The tip of a control while the mouse is at pixel `x`.
  virtual DrawnTip Tip(const Control& control, int x) = 0;
};

// Makes the program in a world.
using ProgramFactory = std::function<std::unique_ptr<Program>(MemoryWorld&)>;

}  // namespace quillbox
