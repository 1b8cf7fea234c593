#include "suite.h"

#include "application.h"

#include <QTest>

int main(int argc, char **argv)
{
    const Application application(argc, argv);
    int failures = 0;
    for (const auto make : TestClasses())
        failures += QTest::qExec(make().get(), argc, argv);
    return failures;
}
