#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // What the programs say is compared in English, whoever starts the tests.
    qputenv("LC_ALL", "C.UTF-8");
    QCoreApplication application(argc, argv);
    // No test touches the journal of the machine.
    if (!qEnvironmentVariableIsSet("FRSPF_JOURNAL"))
        qputenv("FRSPF_JOURNAL", ":memory:");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
