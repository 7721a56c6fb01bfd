#pragma once

#include "register/refusal.h"

#include <QString>

namespace emulator {

/// How a request went, as the XML protocol tells it: category, code and a word of explanation.
struct XmlVerdict
{
    int category = 0;
    int code = 0;
    QString description;
    /// The register's own verdict where it is one; the description says it in the words of its display.
    Refusal refusal = Refusal::None;

    XmlVerdict() = default;
    XmlVerdict(int itsCategory, int itsCode, const QString& words)
        : category(itsCategory)
        , code(itsCode)
        , description(words)
    {
    }
    /// What the register's verdict is called here.
    XmlVerdict(Refusal verdict);

    bool isGood() const { return code == 0; }

    static XmlVerdict badDocument(const QString& words);
    static XmlVerdict badPayments(const QString& words);
    static XmlVerdict badValue(const QString& words);
    static XmlVerdict badVersion(const QString& words);
    static XmlVerdict badRequest(const QString& words);
    static XmlVerdict badData(const QString& words);
    static XmlVerdict unknownCommand();
};

} // namespace emulator
