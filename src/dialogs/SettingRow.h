#pragma once

#include <vector>

#include "core/settings/Norvane.h"
#include "platform/forms/Control.h"

namespace quillbox {

// A setting in the hands of the settings dialog: a control that takes it from the store and gives it back.
// The control is the working copy.
class SettingRow {
 public:
  virtual ~SettingRow() = default;
  SettingRow(const SettingRow&) = delete;
  SettingRow& operator=(const SettingRow&) = delete;

  virtual void Load(Norvane& settings) = 0;
  virtual void Store(Norvane& settings) const = 0;
  // The "Default" button.
  virtual void SetDefault(const Norvane& settings) = 0;

 protected:
  // Joins the dialog's rows, which are loaded and stored in the order in which they have come.
  explicit SettingRow(std::vector<SettingRow*>& rows) { rows.push_back(this); }
};

using SettingRows = std::vector<SettingRow*>;

// Where the control of a row stands, and the rows that it joins.
struct RowPlace {
  Place place;
  SettingRows& rows;
};

// The tip of a setting: what it does, an empty line, and what holds as long as nobody has chosen.
Text SettingTip(TextView description, TextView closing);

}  // namespace quillbox
