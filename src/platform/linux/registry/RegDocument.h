#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/linux/registry/RegText.h"

namespace quillbox {

// Small letters of ASCII for capitals: the form in which names and paths are compared.
Text FoldCase(TextView text);

// A registry file as parsed. A change gives the text of a new file, in which everything else stands as it
// stood: comments, order, and lines that can't be read. Paths begin with the name of their hive.
class RegDocument {
 public:
  using Entry = regtext::Entry;

  RegDocument() = default;
  explicit RegDocument(std::string source);
  // What is parsed points to nothing outside, but a copy is never needed.
  RegDocument(const RegDocument&) = delete;
  RegDocument& operator=(const RegDocument&) = delete;
  RegDocument(RegDocument&&) = default;
  RegDocument& operator=(RegDocument&&) = default;

  const std::string& Source() const { return source_; }

  // Path and name folded. The entry may be a mark that the value is deleted.
  const Entry* Find(const Text& path, const Text& name) const;
  // Path folded. A key is there if it or a key below it has a section.
  bool HasKey(const Text& path) const;

  // Nothing if path or name can't stand in such a file.
  std::optional<std::string> WithKey(TextView path) const;
  std::optional<std::string> WithEntry(TextView path, const Entry& entry) const;
  std::optional<std::string> WithoutEntry(TextView path, TextView name) const;

 private:
  struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;
  };
  struct Value {
    Entry entry;
    std::vector<Span> spans;  // wherever the file sets it; the last one counts
  };
  struct Key {
    std::size_t end = 0;  // where its last section takes a new entry
    std::unordered_map<Text, Value> values;
  };

  void Parse();
  void DeleteKeys(const Text& path);
  std::string Appended(const std::string& section) const;
  std::string_view LineEnd() const;

  std::string source_;
  std::map<Text, Key> keys_;
};

}  // namespace quillbox
