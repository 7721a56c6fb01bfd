#include "keyboardlayout.h"

#include <algorithm>

namespace receipt {

namespace {

// Key by key, first without and then with Shift.
constexpr QStringView russianKeys
    = u"ёйцукенгшщзхъфывапролджэячсмитьбю.ЁЙЦУКЕНГШЩЗХЪФЫВАПРОЛДЖЭЯЧСМИТЬБЮ,\"№;:?/";
constexpr QStringView latinKeys
    = u"`qwertyuiop[]asdfghjkl;'zxcvbnm,./~QWERTYUIOP{}ASDFGHJKL:\"ZXCVBNM<>?@#$^&|";
static_assert(russianKeys.size() == latinKeys.size());

} // namespace

bool isRussianLayout(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar character) {
        return character.script() == QChar::Script_Cyrillic || character == QChar(u'№');
    });
}

QString inLatinLayout(QString text)
{
    for (QChar& character : text) {
        const qsizetype key = russianKeys.indexOf(character);
        if (key >= 0)
            character = latinKeys.at(key);
    }
    return text;
}

} // namespace receipt
