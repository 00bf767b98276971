#include "tray/menu/TrayTip.h"

namespace quillbox {

namespace {

constexpr std::size_t kSingleLineLimit = 36;
constexpr std::size_t kMultiLineLimit = 48;

Text Cleaned(Text text) {
  text = ReplaceAll(text, u"\t", u" ");
  text = ReplaceAll(text, u"\x16", u" ");
  text = ReplaceAll(text, u"&", u"&&&");
  return ReplaceAll(text, u"&&&&&&", u"&&&&&");
}

Text Length(std::size_t length) { return Decimal(static_cast<long long>(length)); }

Text SingleLine(const Text& entry) {
  const Text text = ReplaceAll(ReplaceAll(Cleaned(entry), u"\r", u"|"), u"\n", u"|");
  Text tip = u"Quillbox - ";
  if (text.size() <= kSingleLineLimit) return tip.append(text);
  return tip.append(CutTo(text, kSingleLineLimit - 2))
      .append(u"...  (")
      .append(Length(text.size()))
      .append(u")");
}

Text MultiLine(const Text& entry) {
  // What lies behind twice the limit decides nothing, whatever line ends stand before it.
  const Text text = Cleaned(ReplaceAll(entry.substr(0, 2 * kMultiLineLimit + 2), u"\r\n", u"\n"));
  const Text length = Length(entry.size());
  Text tip = u"Quillbox (L:";
  tip.append(length).append(u")\n");
  if (text.size() <= kMultiLineLimit) return tip.append(text);
  return tip.append(CutTo(text, kMultiLineLimit - 1 - length.size())).append(u"...");
}

}  // namespace

Text ComposeTrayTip(TrayTipMode mode, const Text& entry, const Text& name) {
  if (entry.empty() || mode == TrayTipMode::NameOnly) return name;
  return mode == TrayTipMode::SingleLine ? SingleLine(entry) : MultiLine(entry);
}

}  // namespace quillbox
