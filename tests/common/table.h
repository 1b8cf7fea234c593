#pragma once

#include <QTest>

/// The rows of a data function: the columns by name and type, then a row a call.
template<class... Values>
class Table
{
public:
    template<class... Names>
    explicit Table(Names... columns)
    {
        static_assert(sizeof...(Names) == sizeof...(Values));
        (QTest::addColumn<Values>(columns), ...);
    }

    const Table &Row(const char *name, const Values &...values) const
    {
        QTestData &row = QTest::newRow(name);
        ((row << values), ...);
        return *this;
    }
};
