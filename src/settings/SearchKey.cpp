#include "settings/SearchKey.h"

#include <algorithm>
#include <array>

namespace velmorand {
namespace {

struct Letter {
    char16_t letter;
    const char16_t* typedFor;
};

/// Those that do not come apart in the compatibility decomposition.
constexpr std::array<Letter, 10> letters{{{u'ß', u"ss"},
                                          {u'æ', u"ae"},
                                          {u'ð', u"d"},
                                          {u'ø', u"o"},
                                          {u'þ', u"th"},
                                          {u'đ', u"d"},
                                          {u'ħ', u"h"},
                                          {u'ı', u"i"},
                                          {u'ł', u"l"},
                                          {u'œ', u"oe"}}};

}  // namespace

QString searchKey(const QString& text) {
    QString key;
    const QString decomposed = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    for (const QChar character : decomposed) {
        if (character.isMark()) continue;
        const auto* found = std::ranges::find(letters, character.unicode(), &Letter::letter);
        if (found == letters.end())
            key += character;
        else
            key += QString::fromUtf16(found->typedFor);
    }
    return key;
}

}  // namespace velmorand
