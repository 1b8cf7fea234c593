#pragma once

#include <QObject>

#include <memory>

/// The test classes of a program that has several, each in a file of its own. The program's main runs them all.
class Suite
{
public:
    using Factory = std::unique_ptr<QObject> (*)();

    /// Gives the program a class; to be made as a static object.
    explicit Suite(Factory factory);

    /// Runs every class, and returns the number of tests that failed.
    static int Run(int argc, char **argv);
};

#define TEST_OF_SUITE(Class)                                                                                           \
    static const Suite registration([]() -> std::unique_ptr<QObject> { return std::make_unique<Class>(); });
