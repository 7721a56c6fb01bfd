#pragma once

#include <gtest/gtest.h>
#include <QByteArray>

/// What an interface is asked, and what it answers.
struct AskRow
{
    const char* method;
    const char* path;
    const char* body;
    int status;
    /// Stands in the answer.
    const char* part = "";
};

/// An answer as the test has it, with its status and its body.
template <typename Served>
void expectAnswer(const AskRow& row, const Served& served)
{
    EXPECT_EQ(served.status, row.status) << row.method << ' ' << row.path << ' ' << served.body.toStdString();
    EXPECT_TRUE(served.body.contains(row.part))
        << row.path << " lacks " << row.part << ": " << served.body.left(2000).toStdString();
}
