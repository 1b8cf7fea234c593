#pragma once

#include <QObject>

#include <memory>
#include <vector>

/// The test classes of a program that has several, each in a file of its own. The program's main runs them all.
inline std::vector<std::unique_ptr<QObject> (*)()> &TestClasses()
{
    static std::vector<std::unique_ptr<QObject> (*)()> classes;
    return classes;
}

#define TEST_OF_SUITE(Class)                                                                                           \
    static const auto registered =                                                                                     \
        TestClasses().emplace_back([]() -> std::unique_ptr<QObject> { return std::make_unique<Class>(); });
