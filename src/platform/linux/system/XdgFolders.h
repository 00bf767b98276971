#pragma once

#include <string>
#include <vector>

// The folders that the desktop gives to programs, from the environment. A relative path counts as not set.
namespace quillbox::xdg {

std::string ConfigHome();
std::string DataHome();
std::vector<std::string> ConfigDirs();  // the most important one first
std::string RuntimeFolder();            // empty if there is none

}  // namespace quillbox::xdg
