#include "suite.h"

#include "application.h"

#include <QTest>

#include <vector>

namespace {

std::vector<Suite::Factory> &Factories()
{
    static std::vector<Suite::Factory> factories;
    return factories;
}

} // namespace

Suite::Suite(Factory factory)
{
    Factories().push_back(factory);
}

int Suite::Run(int argc, char **argv)
{
    int failures = 0;
    for (const Factory make : Factories())
        failures += QTest::qExec(make().get(), argc, argv);
    return failures;
}

int main(int argc, char **argv)
{
    const Application application(argc, argv);
    return Suite::Run(argc, argv);
}
