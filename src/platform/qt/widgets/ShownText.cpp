#include "platform/qt/widgets/ShownText.h"

#include <algorithm>

#include "platform/qt/base/QtText.h"

namespace quillbox {

namespace {

// Units of the text that one shown character at `at` stands for.
std::size_t UnitsAt(TextView text, std::size_t at) {
  return text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n' ? 2 : 1;
}

}  // namespace

QString ShownText(TextView text) {
  QString shown;
  shown.reserve(static_cast<qsizetype>(text.size()));
  for (std::size_t at = 0; at < text.size(); at += UnitsAt(text, at)) {
    shown += text[at] == u'\r' ? QChar(u'\n') : QChar(text[at]);
  }
  return shown;
}

std::size_t PlaceInText(TextView text, qsizetype shownPlace) {
  std::size_t at = 0;
  for (; shownPlace > 0 && at < text.size(); --shownPlace) at += UnitsAt(text, at);
  return at;
}

qsizetype PlaceInShown(TextView text, std::size_t place) {
  qsizetype shown = 0;
  for (std::size_t at = 0; at < place && at < text.size(); at += UnitsAt(text, at)) ++shown;
  return shown;
}

Text WithEdit(TextView text, const QString& before, const QString& after) {
  const qsizetype most = std::min(before.size(), after.size());
  qsizetype head = 0;
  while (head < most && before[head] == after[head]) ++head;
  qsizetype tail = 0;
  while (tail < most - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) ++tail;
  const std::size_t from = PlaceInText(text, head);
  const std::size_t to = PlaceInText(text, before.size() - tail);
  Text result(text.substr(0, from));
  result += FromQt(after.mid(head, after.size() - tail - head));
  return result.append(text.substr(to));
}

}  // namespace quillbox
