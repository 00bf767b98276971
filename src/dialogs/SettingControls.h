#pragma once

#include <string_view>
#include <vector>

#include "dialogs/NumberField.h"
#include "dialogs/SettingRow.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/KeyBox.h"
#include "platform/forms/OptionButton.h"

// The kinds of rows that the settings dialog has.
namespace quillbox {

// A setting that is on or off. A box that is disabled shows off.
class SettingCheckBox : public CheckBox, public SettingRow {
 public:
  SettingCheckBox(const RowPlace& at, std::string_view name, const Text& caption,
                  const SwitchSetting& setting, TextView description, TextView closing);
  void Load(Norvane& settings) override { SetValue(GetEnabled() && IsChecked(settings)); }
  void Store(Norvane& settings) const override { settings.Write(setting_, GetValue()); }
  void SetDefault(const Norvane&) override { SetValue(setting_.onByDefault); }

 protected:
  virtual bool IsChecked(Norvane& settings) const { return settings.IsOn(setting_); }
  const SwitchSetting& GetSetting() const { return setting_; }

 private:
  const SwitchSetting& setting_;
};

// The same for a setting of which anything but off counts as on here.
class SettingCheckBoxUnlessOff : public SettingCheckBox {
 public:
  using SettingCheckBox::SettingCheckBox;

 protected:
  bool IsChecked(Norvane& settings) const override { return !settings.IsOff(GetSetting()); }
};

// The autostart entry of the machine, which not everybody has the right to change.
class AutostartCheckBox : public CheckBox, public SettingRow {
 public:
  AutostartCheckBox(const RowPlace& at, std::string_view name, const Text& caption, TextView description,
                    TextView closing);
  void Load(Norvane& settings) override;
  void Store(Norvane& settings) const override { settings.SetAutostart(GetValue()); }
  void SetDefault(const Norvane&) override { SetValue(true); }
};

// Two option buttons for one setting that is on or off.
class SettingOptions : public SettingRow {
 public:
  SettingOptions(SettingRows& rows, OptionButton& on, OptionButton& off, const SwitchSetting& setting)
      : SettingRow(rows), on_(on), off_(off), setting_(setting) {}
  void Load(Norvane& settings) override { Select(settings.IsOn(setting_)); }
  void Store(Norvane& settings) const override { settings.Write(setting_, on_.GetValue()); }
  void SetDefault(const Norvane&) override { Select(setting_.onByDefault); }

 private:
  void Select(bool on) { (on ? on_ : off_).SetValue(true); }

  OptionButton& on_;
  OptionButton& off_;
  const SwitchSetting& setting_;
};

// Whether one click on the tray icon shows the window, or two.
class ClicksOptions : public SettingRow {
 public:
  ClicksOptions(SettingRows& rows, OptionButton& single, OptionButton& twice)
      : SettingRow(rows), single_(single), twice_(twice) {}
  void Load(Norvane& settings) override { (settings.ShowsOnDoubleClick() ? twice_ : single_).SetValue(true); }
  void Store(Norvane& settings) const override { settings.WriteClicksToShow(twice_.GetValue()); }
  void SetDefault(const Norvane&) override { single_.SetValue(true); }

 private:
  OptionButton& single_;
  OptionButton& twice_;
};

// A whole number within the setting's range. The tip stands on the label and tells the range.
class SettingNumber : public NumberField, public SettingRow {
 public:
  SettingNumber(const RowPlace& at, const Names& names, const Text& caption, const RangedSetting& setting,
                TextView description)
      : SettingNumber(at, names, caption, setting, description, 0) {}
  // A stored number that the field can't show is shown as the nearest one that it can.
  void Load(Norvane& settings) override { SetNumber(settings.ReadWhole(setting_) + shownAbove_); }
  void Store(Norvane& settings) const override { settings.Write(setting_, NumberWithin() - shownAbove_); }
  void SetDefault(const Norvane&) override { SetNumber(setting_.byDefault + shownAbove_); }

 protected:
  // `shownAbove`: by how much the number shown is above the stored one.
  SettingNumber(const RowPlace& at, const Names& names, const Text& caption, const RangedSetting& setting,
                TextView description, int shownAbove);

 private:
  const RangedSetting& setting_;
  int shownAbove_;
};

// How many entries a list may hold; the store has the index of the last row.
class SettingListMaximum : public SettingNumber {
 public:
  SettingListMaximum(const RowPlace& at, const Names& names, const Text& caption, const ListMaximum& setting,
                     TextView description)
      : SettingNumber(at, names, caption, setting, description, 1), maximum_(setting) {}
  void Load(Norvane& settings) override { SetNumber(settings.Read(maximum_) + 1); }

 private:
  const ListMaximum& maximum_;
};

// What the tray icon's tip shows. The tip of this row stands on its label.
class TrayTipModeBox : public ComboBox, public SettingRow {
 public:
  TrayTipModeBox(const RowPlace& at, std::string_view name, std::vector<Text> modes, Control& label,
                 TextView description, TextView closing);
  void Load(Norvane& settings) override;
  void Store(Norvane& settings) const override { settings.Write(setting::kTrayTipMode, GetListIndex()); }
  void SetDefault(const Norvane& settings) override {
    SetListIndex(static_cast<int>(settings.DefaultTrayTipMode()));
  }
};

// A text in one line. The "Default" button leaves it as it is.
class SettingText : public TextBox, public SettingRow {
 public:
  SettingText(const RowPlace& at, std::string_view name, const TextSetting& setting)
      : TextBox(at.place, name, Lines::One), SettingRow(at.rows), setting_(setting) {}
  void Load(Norvane& settings) override { SetText(settings.Read(setting_)); }
  void Store(Norvane& settings) const override { settings.Write(setting_, GetText()); }
  void SetDefault(const Norvane&) override {}

 private:
  const TextSetting& setting_;
};

// A key for the whole desktop; none by default.
class SettingKey : public KeyBox, public SettingRow {
 public:
  SettingKey(const RowPlace& at, std::string_view name, const TextSetting& setting, TextView description,
             TextView closing);
  void Load(Norvane& settings) override { SetText(settings.Read(setting_)); }
  void Store(Norvane& settings) const override { settings.Write(setting_, GetText()); }
  void SetDefault(const Norvane&) override { SetText(Text(setting_.byDefault)); }

 private:
  const TextSetting& setting_;
};

}  // namespace quillbox
