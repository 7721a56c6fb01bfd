#pragma once

#include <QStringList>

#include <gtest/gtest.h>

/// What frctl answered in the tests of this process: in the end all of it must be as the schema says.
class Answers : public testing::Environment
{
public:
    static void collect(const QStringList& arguments, const QByteArray& output);
    void TearDown() override;
};
