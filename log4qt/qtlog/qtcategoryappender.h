#pragma once

#include "qtlogcategories.h"

#include <log4qt/appenderskeleton.h>

#include <map>
#include <memory>

/// Writes what the real Log4Qt logs into Qt's logging categories.
class QtCategoryAppender : public Log4Qt::AppenderSkeleton
{
public:
    bool requiresLayout() const override { return false; }

protected:
    void append(const Log4Qt::LoggingEvent& event) override;

private:
    const QtLogCategories& categories(const QString& loggerName);

    std::map<QString, std::unique_ptr<QtLogCategories>> m_categories;
};
