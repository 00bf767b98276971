#include "dialogs/SettingControls.h"

#include <algorithm>
#include <utility>

#include "base/NumberText.h"

namespace quillbox {

namespace {

Text RangeText(const Range& range, int byDefault) {
  Text text = u"(Range: ";
  return text.append(Decimal(range.lowest))
      .append(u" to ")
      .append(Decimal(range.highest))
      .append(u", Default = ")
      .append(Decimal(byDefault))
      .append(u")");
}

Range Shifted(const Range& range, int by) { return {range.lowest + by, range.highest + by}; }

}  // namespace

Text SettingTip(TextView description, TextView closing) {
  return Text(description).append(u"\r\n\r\n").append(closing);
}

SettingCheckBox::SettingCheckBox(const RowPlace& at, std::string_view name, const Text& caption,
                                 const SwitchSetting& setting, TextView description, TextView closing)
    : CheckBox(at.place, name, caption), SettingRow(at.rows), setting_(setting) {
  SetToolTipText(SettingTip(description, closing));
}

AutostartCheckBox::AutostartCheckBox(const RowPlace& at, std::string_view name, const Text& caption,
                                     TextView description, TextView closing)
    : CheckBox(at.place, name, caption), SettingRow(at.rows) {
  SetToolTipText(SettingTip(description, closing));
}

// Without the right to change it the box shows what holds.
void AutostartCheckBox::Load(Norvane& settings) {
  SetValue(settings.IsAutostartWanted());
  if (!settings.MayChangeAutostart()) SetEnabled(false);
}

SettingNumber::SettingNumber(const RowPlace& at, const Names& names, const Text& caption,
                             const RangedSetting& setting, TextView description, int shownAbove)
    : NumberField(at.place, names, caption, Shifted(setting.range, shownAbove)),
      SettingRow(at.rows),
      setting_(setting),
      shownAbove_(shownAbove) {
  label.SetToolTipText(
      SettingTip(description, RangeText(Shifted(setting.range, shownAbove), setting.byDefault + shownAbove)));
}

TrayTipModeBox::TrayTipModeBox(const RowPlace& at, std::string_view name, std::vector<Text> modes,
                               Control& label, TextView description, TextView closing)
    : ComboBox(at.place, name, std::move(modes)), SettingRow(at.rows) {
  label.SetToolTipText(SettingTip(description, closing));
}

void TrayTipModeBox::Load(Norvane& settings) {
  const auto [lowest, highest] = setting::kTrayTipMode.range;
  SetListIndex(
      static_cast<int>(std::clamp<long long>(NearestWhole(settings.ReadTrayTipMode()), lowest, highest)));
}

SettingKey::SettingKey(const RowPlace& at, std::string_view name, const TextSetting& setting,
                       TextView description, TextView closing)
    : KeyBox(at.place, name), SettingRow(at.rows), setting_(setting) {
  SetToolTipText(SettingTip(description, closing));
}

}  // namespace quillbox
