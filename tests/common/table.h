#pragma once

#include <QTest>

/// A text in a table, UTF-8 when it is a plain literal.
struct TableText
{
    TableText() = default;
    TableText(const QString &text) : value(text) {}
    TableText(const char *text) : value(QString::fromUtf8(text)) {}
    operator const QString &() const { return value; }

    QString value;
};

/// The rows of a data function: the columns by name and type, then a row a call.
template<class... Values>
class Table
{
    template<class Value>
    using Cell = std::conditional_t<std::is_same_v<Value, QString>, TableText, Value>;

public:
    template<class... Names>
    explicit Table(Names... columns)
    {
        static_assert(sizeof...(Names) == sizeof...(Values));
        (QTest::addColumn<Values>(columns), ...);
    }

    const Table &Row(const char *name, const Cell<Values> &...values) const
    {
        QTestData &row = QTest::newRow(name);
        ((row << static_cast<const Values &>(values)), ...);
        return *this;
    }
};
