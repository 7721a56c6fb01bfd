#pragma once

#include "finding.h"

#include <QJsonArray>
#include <QList>

namespace frctl {

/// What was said that is no error: on standard error at once, and in the JSON in the end.
class Warnings
{
public:
    void add(const QList<receipt::Finding>& findings);
    QJsonArray json() const;

private:
    QList<receipt::Finding> m_findings;
};

} // namespace frctl
