#include "clip/UrlCut.h"

namespace quillbox {

Text CutUrlPart(TextView text) {
  // An address that the text itself begins with doesn't count.
  constexpr std::size_t kBehindOwnScheme = 6;
  std::size_t start = 0;
  if (const std::size_t embedded = text.find(u"http://", kBehindOwnScheme); embedded != TextView::npos) {
    start = embedded;
  } else if (const std::size_t value = text.find(u'='); value != TextView::npos) {
    start = value + 1;
  } else if (const std::size_t query = text.find(u'?'); query != TextView::npos) {
    start = query + 1;
  }
  const std::size_t end = text.find(u'&', start + 1);
  return Text(text.substr(start, end == TextView::npos ? end : end - start));
}

}  // namespace quillbox
