#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/linux/files/SystemCalls.h"
#include "platform/ports/Files.h"

// Whole files, read and replaced in one step. Every function gives 0 or the errno of its failure.
namespace quillbox {

// The folder part of a path, "." if it has none; never empty.
std::string FolderOf(const std::string& path);

// Follows symbolic links to the file that they lead to, which need not exist. ELOOP for a loop.
int ResolveLinks(std::string& path);

// Reads a regular file of at most `maxBytes` bytes; EFBIG for a longer one, EINVAL for anything that isn't a
// file (a pipe, a device), EISDIR for a folder. `stamp`, if given, is what fstat said before the first byte
// was read.
int ReadWholeFile(SystemCalls& calls, const std::string& path, std::size_t maxBytes, std::string& content,
                  struct stat* stamp = nullptr);

// Puts `content` in place of the file, with mode 0600: written to a new file beside it, which is then renamed
// over it. On failure the old file is untouched and nothing is left beside it. A file without write
// permission isn't replaced (EACCES), nor is anything but a regular file. `path` becomes that of the file
// written.
int ReplaceFile(SystemCalls& calls, std::string& path, std::string_view content);
// The same with a content that comes in pieces, of which those after a failed one are left alone.
int ReplaceFile(SystemCalls& calls, std::string& path, const Files::Content& content);

// Makes the folder, mode 0700, and with `parents` whatever is missing above it. One that is there is no
// failure.
int MakeFolder(const std::string& path, bool parents);

}  // namespace quillbox
