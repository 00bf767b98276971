#pragma once

#include <QString>

#include "base/Text.h"

namespace quillbox {

// A field shows each line end as one line break, whatever it is in the text, so that places in the field and
// in the text differ. These two lead from one to the other, and an edit in the field leaves the rest of the
// text, its line ends included, exactly as it is.

// What a field of many lines shows of a text.
QString ShownText(TextView text);
// The place in the text of a place in what is shown, and back.
std::size_t PlaceInText(TextView text, qsizetype shownPlace);
qsizetype PlaceInShown(TextView text, std::size_t place);

// `text` with the edit that made `after` of `before`, both as the field gives them.
Text WithEdit(TextView text, const QString& before, const QString& after);

}  // namespace quillbox
