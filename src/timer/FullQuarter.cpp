#include "timer/FullQuarter.h"

#include "base/NumberText.h"

namespace quillbox {

FullQuarter NextFullQuarter(double minute, double hour) {
  if (minute < 15) return {MakeTextFromNumber(hour), u"15"};
  if (minute < 30) return {MakeTextFromNumber(hour), u"30"};
  if (minute < 45) return {MakeTextFromNumber(hour), u"45"};
  return {hour + 1 > 23 ? u"0" : MakeTextFromNumber(hour + 1), u"00"};
}

}  // namespace quillbox
