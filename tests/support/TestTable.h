#pragma once

#include <QTest>

/// The columns of a test's table, named where they are made; each call adds a row: its name and its cells.
template <typename... Types>
class TestTable final
{
public:
    template <typename... Names>
    explicit TestTable(const Names &...names)
    {
        static_assert(sizeof...(Names) == sizeof...(Types));
        (QTest::addColumn<Types>(names), ...);
    }
    void operator()(const char *name, const Types &...cells) const { (QTest::newRow(name) << ... << cells); }
};
