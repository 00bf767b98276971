#pragma once

#include <locale.h>

namespace quillbox {

// The locale that the user has set for some categories; the process's own locale stays as it is.
class UserLocale {
 public:
  // `categories` are LC_..._MASK. Where the user's locale isn't installed, it is the plain one of C.
  explicit UserLocale(int categories) : locale_(::newlocale(categories, "", nullptr)) {
    if (locale_ == nullptr) locale_ = ::newlocale(LC_ALL_MASK, "C", nullptr);
  }
  ~UserLocale() {
    if (locale_ != nullptr) ::freelocale(locale_);
  }
  UserLocale(const UserLocale&) = delete;
  UserLocale& operator=(const UserLocale&) = delete;

  locale_t Get() const { return locale_; }

 private:
  locale_t locale_;
};

}  // namespace quillbox
