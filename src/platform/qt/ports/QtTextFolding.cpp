#include "platform/qt/ports/QtTextFolding.h"

#include <QChar>
#include <QList>
#include <QString>

#include "platform/qt/base/QtText.h"

namespace quillbox {

namespace {

// Accents, and the points of Hebrew and Arabic. Not the signs that make another letter of one: a voiced kana,
// the vowels of Indian and Thai writing.
bool IsAccent(char32_t character) {
  const auto place = QChar::combiningClass(character);
  return (place >= 10 && place <= 36) || place >= 200;
}

// Letters that Unicode takes for letters of their own, or Qt folds into themselves; and what a person types
// who has no key for them.
struct Likeness {
  char16_t letter;
  const char16_t* typed;
};
constexpr Likeness kLikenesses[] = {{u'ß', u"ss"}, {u'ø', u"o"},  {u'ł', u"l"}, {u'đ', u"d"},
                                    {u'ħ', u"h"},  {u'ŧ', u"t"},  {u'ı', u"i"}, {u'ð', u"d"},
                                    {u'þ', u"th"}, {u'æ', u"ae"}, {u'œ', u"oe"}};

}  // namespace

Text QtTextFolding::Fold(char32_t character) {
  const QString whole = QString::fromUcs4(&character, 1).normalized(QString::NormalizationForm_KD);
  QString folded;
  for (const char32_t part : whole.toUcs4()) {
    if (!IsAccent(part)) folded += QString::fromUcs4(&part, 1).toCaseFolded();
  }
  for (const Likeness& likeness : kLikenesses) {
    folded.replace(QChar(likeness.letter), QStringView(likeness.typed).toString());
  }
  return FromQt(folded);
}

}  // namespace quillbox
