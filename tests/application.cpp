#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    // No test touches the journal of the machine.
    if (!qEnvironmentVariableIsSet("FRSPF_JOURNAL"))
        qputenv("FRSPF_JOURNAL", ":memory:");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
