#include "platform/linux/registry/RegDocument.h"

#include <algorithm>
#include <cassert>

namespace quillbox {
namespace {

constexpr std::string_view kSignature = "REGEDIT4";

// As FoldCase gives it.
[[maybe_unused]] bool IsFolded(TextView text) {
  return std::none_of(text.begin(), text.end(), [](char16_t unit) { return unit >= u'A' && unit <= u'Z'; });
}

bool EndsLine(const std::string& text, std::size_t at) { return at == 0 || text[at - 1] == '\n'; }

}  // namespace

Text FoldCase(TextView text) {
  Text folded(text);
  for (char16_t& unit : folded) {
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + 32);
  }
  return folded;
}

RegDocument::RegDocument(std::string source) : source_(std::move(source)) { Parse(); }

void RegDocument::Parse() {
  Key* key = nullptr;  // none before the first section, and in one whose header can't be read
  std::size_t at = 0;
  while (at < source_.size()) {
    const std::string_view rest = std::string_view(source_).substr(at);
    const std::string_view line = regtext::FirstLine(rest);
    std::size_t length = line.size();
    if (std::optional<Entry> entry = regtext::ReadEntry(rest, length)) {
      if (key != nullptr) {
        Value& value = key->values[FoldCase(entry->name)];
        // The name stays as it was written first.
        if (!value.spans.empty()) entry->name = std::move(value.entry.name);
        value.entry = *std::move(entry);
        value.spans.push_back({at, at + length});
      }
    } else if (regtext::LooksLikeHeader(line)) {
      key = nullptr;
      if (const std::optional<regtext::Header> header = regtext::ReadHeader(line)) {
        const Text path = FoldCase(header->path);
        if (header->deleted) {
          DeleteKeys(path);
        } else {
          key = &keys_[path];
        }
      }
    }
    at += length;
    if (key != nullptr && !regtext::IsBlank(line)) key->end = at;
  }
}

void RegDocument::DeleteKeys(const Text& path) {
  keys_.erase(path);
  const Text below = path + u'\\';
  const auto first = keys_.lower_bound(below);
  auto last = first;
  while (last != keys_.end() && last->first.starts_with(below)) ++last;
  keys_.erase(first, last);
}

const RegDocument::Entry* RegDocument::Find(const Text& path, const Text& name) const {
  assert(IsFolded(path) && IsFolded(name));
  const auto key = keys_.find(path);
  if (key == keys_.end()) return nullptr;
  const auto value = key->second.values.find(name);
  return value == key->second.values.end() ? nullptr : &value->second.entry;
}

bool RegDocument::HasKey(const Text& path) const {
  assert(IsFolded(path));
  if (keys_.contains(path)) return true;
  const auto below = keys_.lower_bound(path + u'\\');
  return below != keys_.end() && below->first.starts_with(path + u'\\');
}

std::string_view RegDocument::LineEnd() const {
  const std::string_view first = regtext::FirstLine(source_);
  return first.ends_with('\n') && !first.ends_with("\r\n") ? "\n" : "\r\n";
}

std::string RegDocument::Appended(const std::string& section) const {
  std::string result = source_;
  if (result.empty()) result.append(kSignature).append(LineEnd());
  if (!EndsLine(result, result.size())) result += LineEnd();
  return result.append(LineEnd()).append(section);
}

std::optional<std::string> RegDocument::WithKey(TextView path) const {
  const std::optional<std::string> header = regtext::WriteHeader(path, LineEnd());
  // What could not be read back must not be written.
  if (!header || regtext::ReadHeader(*header).value_or(regtext::Header{}).path != path) return std::nullopt;
  return HasKey(FoldCase(path)) ? source_ : Appended(*header);
}

std::optional<std::string> RegDocument::WithEntry(TextView path, const Entry& entry) const {
  std::optional<std::string> line = regtext::WriteEntry(entry, LineEnd());
  if (!line) return std::nullopt;
  const auto key = keys_.find(FoldCase(path));
  if (key == keys_.end()) {
    const std::optional<std::string> header = regtext::WriteHeader(path, LineEnd());
    if (!header || regtext::ReadHeader(*header).value_or(regtext::Header{}).path != path) return std::nullopt;
    return Appended(*header + *line);
  }
  std::string result = source_;
  const auto value = key->second.values.find(FoldCase(entry.name));
  if (value == key->second.values.end()) {
    const std::size_t at = key->second.end;
    if (!EndsLine(result, at)) line->insert(0, LineEnd());
    return result.insert(at, *line);
  }
  Entry renamed = entry;
  renamed.name = value->second.entry.name;
  const Span& span = value->second.spans.back();
  return result.replace(span.begin, span.end - span.begin, *regtext::WriteEntry(renamed, LineEnd()));
}

std::optional<std::string> RegDocument::WithoutEntry(TextView path, TextView name) const {
  std::string result = source_;
  const auto key = keys_.find(FoldCase(path));
  if (key == keys_.end()) return result;
  const auto value = key->second.values.find(FoldCase(name));
  if (value == key->second.values.end()) return result;
  const std::vector<Span>& spans = value->second.spans;
  std::for_each(spans.rbegin(), spans.rend(),
                [&](const Span& span) { result.erase(span.begin, span.end - span.begin); });
  return result;
}

}  // namespace quillbox
