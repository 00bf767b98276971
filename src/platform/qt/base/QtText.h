#pragma once

#include <QString>

#include "base/Text.h"

namespace quillbox {

inline QString ToQt(TextView text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

inline Text FromQt(const QString& text) {
  return Text(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size()));
}

}  // namespace quillbox
