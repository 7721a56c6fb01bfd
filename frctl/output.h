#pragma once

#include "errors.h"

#include <QJsonObject>
#include <QStringList>

namespace frctl {

/// What a command has to say: the same for people and for machines.
struct Output
{
    QStringList lines = {};
    QJsonObject json = {};
    /// ExitIssued for a receipt that an earlier run began and this one found issued.
    ExitStatus status = ExitSuccess;
    /// Of the document that was issued, when it was one.
    sale::Verdict verdict = {};
    /// The lines are printed also where JSON is asked for: each is a JSON object by itself, or they are a
    /// text that has no other form.
    bool areLinesAll = false;
    /// What is written as it is, and nothing besides; empty for none.
    QByteArray bytes = {};
};

/// A text that has no other form.
inline Output plainText(const QString& text)
{
    return {.lines = {text}, .areLinesAll = true};
}

} // namespace frctl
