#include "application.h"
#include "tests.h"

#include <QTest>

int main(int argc, char *argv[])
{
    const Application application(argc, argv);
    int failures = 0;
    for (const auto create :
         {CreateKeysTest, CreatePositionsTest, CreateErrorFormTest, CreateDialogsTest, CreateTextBoxTest})
        failures += QTest::qExec(create().get(), argc, argv);
    return failures;
}
